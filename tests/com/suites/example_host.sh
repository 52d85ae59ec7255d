# shellcheck shell=bash
# Runs examples/windows_host/import.vbs unchanged.
source ./suites/registered.sh

Register KRN6_QB2002.dll KRN6_TestProcessor.dll
stage=$root$work/stage
Stage "$tree/examples/windows_host/import.vbs"
Stage "$area/recordings/1.1-ald-none.jsonl"
cp "$area/recordings/ald.kpf" "$stage/nursery.kpf"

export KRNQB_RECORDING=1.1-ald-none.jsonl
Script 120 'The accounts of C:\Books\nursery.qbw are in nursery.kpf' import.vbs nursery.kpf || Fail "the example did not import"
"$KRNQB_PROGRAM" plan show "$stage/nursery.kpf" --cells | cmp - "$area/recordings/1.1-ald-none.cells" ||
  Fail "the example's plan differs from the recorded import"

# The example reports failures.
export KRNQB_REFUSED_CALL=connection KRNQB_REFUSAL_TEXT="not today"
output=$(Windows 60 cscript //nologo import.vbs nursery.kpf | tr -d '\r') && Fail "a failed import exited with 0: $output"
[ "$output" = "Not imported: Error (-2147220480): not today" ] || Fail "unexpected message for a failed import: $output"
output=$(Windows 60 cscript //nologo import.vbs missing.kpf | tr -d '\r') && Fail "a missing plan exited with 0: $output"
[ "$output" = "There is no plan missing.kpf" ] || Fail "unexpected message for a missing plan: $output"
echo "the example host imports"
