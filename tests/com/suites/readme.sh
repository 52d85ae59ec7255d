# shellcheck shell=bash
# The program of the README, as it stands there.
source ./suites/registered.sh

Register KRN6_QB2002.dll KRN6_TestProcessor.dll
stage=$root$work/stage
awk '/^```vbs$/ { inside = 1; next } /^```/ { inside = 0 } inside' "$tree/README.md" >"$stage/import.vbs"
[ "$(wc -l <"$stage/import.vbs")" -gt 40 ] || Fail "README.md has no program: the reading of it must be wrong"
Stage "$area/recordings/1.1-ald-none.jsonl"
cp "$area/recordings/ald.kpf" "$stage/nursery.kpf"

export KRNQB_RECORDING=1.1-ald-none.jsonl
Script 120 'The accounts of C:\Books\nursery.qbw are in nursery.kpf' import.vbs nursery.kpf || Fail "the README's program"
"$KRNQB_PROGRAM" plan show "$stage/nursery.kpf" --cells | cmp - "$area/recordings/1.1-ald-none.cells" ||
  Fail "the README's program left another plan"

# Its failures are told, too.
export KRNQB_REFUSED_CALL=connection KRNQB_REFUSAL_TEXT="not today"
output=$(Windows 60 cscript //nologo import.vbs nursery.kpf | tr -d '\r') && Fail "a failure ended with 0: $output"
[ "$output" = "Not imported: Error (-2147220480): not today" ] || Fail "a failure was told so: $output"
output=$(Windows 60 cscript //nologo import.vbs missing.kpf | tr -d '\r') && Fail "a missing plan ended with 0: $output"
[ "$output" = "There is no plan missing.kpf" ] || Fail "a missing plan was told so: $output"
echo "the README's program imports"
