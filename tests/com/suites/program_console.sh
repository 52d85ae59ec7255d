# shellcheck shell=bash
# krnqb.exe in a console of 80 columns, without a console, without streams, and when Ctrl-C is pressed.
source ./suites/both_systems.sh
Built krnqb_process_tool.exe
cp "$area/recordings/1.1-ald-all.jsonl" "$stage/books.jsonl"
cp "$area/recordings/ald.kpf" "$stage/plan.kpf"
import=(import --replay books.jsonl --plan plan.kpf --expenses --income --balances all)

# An output whose reader has ended, and streams that are closed.
Windows 60 krnqb.exe plan show plan.kpf --values | head -n 1 >/dev/null || true
code=0
Windows 60 krnqb.exe plan show plan.kpf >&- 2>"$outputs/err" || code=$?
[ $code = 1 ] || Fail "a closed standard output: exit code $code"
grep -q 'cannot write to standard output' "$outputs/err" || Fail "a closed standard output: $(cat "$outputs/err")"

# Without a console.
Windows 60 krnqb_process_tool.exe detached krnqb.exe "${import[@]}" --quiet || Fail "without a console: exit code $?"
cmp -s "$area/recordings/ald.kpf" "$stage/plan.kpf" && Fail "without a console: nothing was imported"
Windows 60 krnqb.exe plan undo plan.kpf >/dev/null

# Ctrl-C reaches a Windows program under Wine as SIGINT. A company of this size takes seconds to import.
"$KRNQB_PROGRAM" company generate "$stage/large.qbw" --transactions 30000 --accounts 400 --years 2002-2002 >/dev/null
cp "$area/recordings/ald.kpf" "$stage/interrupted.kpf"

# Interrupt: starts an import, and presses Ctrl-C as soon as it has begun. Sets code.
Interrupt() {
  local job process
  Windows 60 krnqb.exe import --company large.qbw --plan interrupted.kpf --expenses --income --balances all \
    >"$outputs/out" 2>"$outputs/err" &
  job=$!
  until grep -q '^Importing ' "$outputs/out"; do
    kill -0 $job 2>/dev/null || Fail "the import to be interrupted: $(cat "$outputs/err")"
    sleep 0.02
  done
  process=$(ProcessOf $job) || Fail "the import ended before it could be interrupted"
  kill -INT "$process" || Fail "the import ended before it could be interrupted"
  code=0
  wait $job || code=$?
}

Interrupt
[ $code = 130 ] || Fail "Ctrl-C: exit code $code: $(cat "$outputs/err")"
grep -q 'krnqb: import interrupted: stopped on request; nothing was written' "$outputs/err" ||
  Fail "Ctrl-C: $(cat "$outputs/err")"
cmp "$area/recordings/ald.kpf" "$stage/interrupted.kpf" || Fail "Ctrl-C: the plan has changed"
[ -z "$(find "$stage" -name 'interrupted.kpf.*' ! -name '*.lock')" ] || Fail "Ctrl-C: files are left beside the plan"

# A console is a terminal of this system. Its last column stays free.
ProgramAsScript "$root$work/krnqb"

# Widest COLUMNS: shows a plan in a console of so many columns, and prints the length of the longest line.
Widest() {
  (cd "$stage" && script --quiet --return --command "stty cols $1 rows 500; '$root$work/krnqb' plan show plan.kpf --values" \
    "$outputs/typescript" </dev/null >"$outputs/console.$1") || Fail "a console of $1 columns: $(cat "$outputs/console.$1")"
  # Without the console's own instructions.
  sed -Ei -e 's/\x1b\[[0-9;?]*[A-Za-z]//g' -e 's/\r//g' "$outputs/console.$1"
  LC_ALL=C.UTF-8 wc --max-line-length <"$outputs/console.$1"
}

narrow=$(Widest 80)
wide=$(Widest 200)
grep -q 'Café Sales' "$outputs/console.80" || Fail "a console does not show letters outside ASCII"
[ "$narrow" -gt 60 ] && [ "$narrow" -lt 80 ] || Fail "a console of 80 columns has a line of $narrow"
[ "$wide" -gt 100 ] && [ "$wide" -lt 200 ] || Fail "a console of 200 columns has a line of $wide"
echo "lines of at most $narrow characters in a console of 80 columns, of $wide in one of 200"
