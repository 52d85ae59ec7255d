# shellcheck shell=bash
# The command line: krnqb.exe and the Linux krnqb run the same commands, from a new company to an undone import, on files
# whose names need Unicode, and must print and write the same.
Built krnqb.exe
stage=$root$work/stage
linux=$root$work/linux
outputs=$root$work/outputs
mkdir -p "$linux" "$outputs"
for folder in "$stage" "$linux"; do
  cp "$tree"/samples/nursery/*.xml "$folder/"
  cp "$tree/samples/plans/nursery-ald.kpf" "$folder/Gärtnerei 苗圃.kpf"
done

# Readable: prints what a program has printed without what differs from run to run and from system to system: times,
# durations and the folder.
Readable() {
  tr -d '\r' | sed -E -e 's/[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}/TIME/g' -e 's/[0-9.]+ (s|ms)\b/DURATION/g' \
    -e 's#[A-Z]:\\[^:;,]*\\stage\\#FOLDER/#g' -e "s#$linux/#FOLDER/#g"
}

# Same CODE ARGUMENT...: runs a command on both systems. Both must end with CODE and print the same.
Same() {
  local code=$1 onWindows=0 onLinux=0
  shift
  Windows 120 krnqb.exe "$@" >"$outputs/windows.out" 2>"$outputs/windows.err" || onWindows=$?
  (cd "$linux" && "$KRNQB_PROGRAM" "$@" >"$outputs/linux.out" 2>"$outputs/linux.err") || onLinux=$?
  local stream
  for stream in out err; do
    diff <(Readable <"$outputs/linux.$stream") <(Readable <"$outputs/windows.$stream") ||
      Fail "krnqb $*: std$stream differs (< Linux, > Windows)"
  done
  [ "$onLinux" = "$code" ] || Fail "krnqb $*: exit code $onLinux on Linux, not $code"
  [ "$onWindows" = "$code" ] || Fail "krnqb $*: exit code $onWindows on Windows, not $code"
}

# Without the stamp that each save writes.
WithoutStamp() { sed -E 's#<lastsavedid>[^<]*#<lastsavedid>#' "$1"; }
SamePlan() {
  cmp <(WithoutStamp "$linux/$1") <(WithoutStamp "$stage/$1") || Fail "$2: the plans differ"
}

company='Höhle – 苗圃.qbw'
plan='Gärtnerei 苗圃.kpf'
Same 0 --version
Same 0 company new "$company" --name "Hollow Creek Nursery" --fiscal-month January --processor 1.1
Same 0 company load "$company" accounts.xml items.xml preferences.xml company.xml bills.xml checks.xml \
  credit-card-charges.xml invoices.xml sales-receipts.xml
Same 0 company check "$company"
Same 0 plan new "neu é.kpf" --product bri --start 2003-07
SamePlan "neu é.kpf" "a new plan"
Same 1 plan new "neu é.kpf" --product bri --start 2003-07
import=(import --company "$company" --plan "$plan" --expenses --income --past-performance --balances all
  --growth-income 10 --growth-expenses 3)
Same 0 "${import[@]}" --ledger 'Buch ü.kql'
SamePlan "$plan" "an import"
cmp "$linux/$plan.bak" "$stage/$plan.bak" || Fail "an import: the backups differ"
Same 0 plan show "$plan" --values
Same 4 reconcile --company "$company" --plan "$plan"
Same 0 explain 'Buch ü.kql' --row 'Job Expenses' --month 2002-03
Same 0 plan undo "$plan"
SamePlan "$plan" "an undo"
cmp <(WithoutStamp "$tree/samples/plans/nursery-ald.kpf") <(WithoutStamp "$stage/$plan") || Fail "the plan is not as before"
Same 1 import --company "$company" --plan missing.kpf --expenses
Same 2 import --company "$company"

# A plan that another import is changing: of two at once one may be refused, and the plan is whole in any case.
Windows 120 krnqb.exe "${import[@]}" --quiet >"$outputs/first" 2>&1 &
first=$!
secondCode=0
Windows 120 krnqb.exe "${import[@]}" --quiet >"$outputs/second" 2>&1 || secondCode=$?
firstCode=0
wait $first || firstCode=$?
for outcome in "$firstCode:$outputs/first" "$secondCode:$outputs/second"; do
  if [ "${outcome%%:*}" != 0 ]; then
    grep -q 'another import or undo is changing it' "${outcome#*:}" || Fail "two at once: $(cat "${outcome#*:}")"
  fi
done
[ "$firstCode" = 0 ] || [ "$secondCode" = 0 ] || Fail "two at once: none has imported"
(cd "$linux" && "$KRNQB_PROGRAM" "${import[@]}" --quiet 2>/dev/null)
SamePlan "$plan" "two imports at once"

# An output whose reader has ended, and streams that are closed.
Windows 60 krnqb.exe plan show "$plan" --values | head -n 1 >/dev/null || true
Windows 60 krnqb.exe plan show "$plan" >&- || [ $? = 1 ] || Fail "a closed standard output"
