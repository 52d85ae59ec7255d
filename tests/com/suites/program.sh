# shellcheck shell=bash
# The command line: krnqb.exe and the Linux krnqb run the same commands, from a new company to an undone import, on files
# whose names need Unicode, and must print and write the same.
source ./suites/both_systems.sh
for folder in "$stage" "$linux"; do
  cp "$tree"/samples/nursery/*.xml "$folder/"
  cp "$tree/samples/plans/nursery-ald.kpf" "$folder/Gärtnerei 苗圃.kpf"
done

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
# A copy has no history, which would say when each of the two imports was made.
cp "$linux/$plan" "$linux/Kopie 苗圃.kpf"
cp "$linux/$plan" "$stage/Kopie 苗圃.kpf"
Same 0 plan export 'Kopie 苗圃.kpf' --xlsx 'Tabelle 苗圃.xlsx' --csv 'csv é'
for file in 'Tabelle 苗圃.xlsx' 'csv é/summary.csv' 'csv é/02-planned-sales.csv'; do
  cmp "$linux/$file" "$stage/$file" || Fail "an export: $file differs"
done
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

# Imports of every product, processor version and choice of balances, from recordings.
declare -i compared=0
cp "$area"/recordings/*.jsonl "$stage/"
cp "$area"/recordings/*.jsonl "$linux/"
for recording in "$area"/recordings/*.jsonl; do
  name=$(basename "$recording" .jsonl)
  product=${name#*-}
  product=${product%-*}
  for folder in "$stage" "$linux"; do cp "$area/recordings/$product.kpf" "$folder/imported.kpf"; done
  options=(--expenses --income --past-performance --balances "${name##*-}")
  if [ "${name##*-}" != none ]; then options+=(--growth-income 10 --growth-cogs 5 --growth-expenses 3); fi
  if [ "$product" = bri ]; then options+=(--select-all-expenses); fi
  Same 0 import --replay "$name.jsonl" --plan imported.kpf "${options[@]}"
  SamePlan imported.kpf "$name"
  compared+=1
done
[ $compared -ge 24 ] || Fail "only $compared recordings"
echo "$compared imports printed and wrote the same on both systems"

# The companies of QuickBooks are in the folder of its program, which the registry has.
Windows 60 krnqb.exe companies >/dev/null 2>"$outputs/err" && Fail "an unknown folder of QuickBooks"
grep -q 'the folder of the QuickBooks program is unknown; give --quickbooks-folder DIR' "$outputs/err" ||
  Fail "an unknown folder of QuickBooks: $(cat "$outputs/err")"
mkdir "$stage/Büro"
cp "$stage/$company" "$stage/Büro/Erste.qbw"
program='HKLM\SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\qbw32.exe'
Windows 60 reg add "$program" /ve /d "Z:${work//\//\\}\\stage\\Büro\\qbw32.exe" /f >/dev/null
companies=$(Windows 60 krnqb.exe companies | tr -d '\r')
[ "$companies" = "Z:${work//\//\\}\\stage\\Büro\\Erste.qbw" ] || Fail "the companies of the registry: $companies"
settings=$(find "$root$work/prefix/drive_c/users" -type d -path '*/AppData/Roaming' | head -n 1)
mkdir -p "$settings/krnqb"
echo 'quickbooks-folder = .' >"$settings/krnqb/config.ini"
companies=$(Windows 60 krnqb.exe companies | tr -d '\r')
[ "$companies" = "Z:${work//\//\\}\\stage\\$company" ] || Fail "the companies of the configured folder: $companies"
