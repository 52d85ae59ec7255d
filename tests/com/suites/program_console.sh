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
