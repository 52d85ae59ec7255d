# shellcheck shell=bash
# What a host waits for: creating the component, and an import of 5,000 accounts into a plan of as many rows. The cells must
# be those of the same import by the command line. Prints lines "NAME SECONDS".
source ./suites/registered.sh
source "$tree/bench/inputs.sh"

Register KRN6_QB2002.dll KRN6_TestProcessor.dll
Built krnqb_speed_tests.exe
recordings=$root$work/stage/recordings
mkdir "$recordings"
AccountDocument 5000 >"$recordings/accounts.xml"
Plan 5000 >"$recordings/ald.kpf"
cp "$recordings/ald.kpf" "$recordings/imported.kpf"
"$KRNQB_PROGRAM" company new "$recordings/company.qbw" --name Speed --fiscal-month January --processor 1.1 >/dev/null
"$KRNQB_PROGRAM" company load "$recordings/company.qbw" "$recordings/accounts.xml" >/dev/null
"$KRNQB_PROGRAM" import --company "$recordings/company.qbw" --plan "$recordings/imported.kpf" \
  --record "$recordings/1.1-ald-none.jsonl" --expenses --balances none --quiet 2>/dev/null
"$KRNQB_PROGRAM" plan show "$recordings/imported.kpf" --cells >"$recordings/1.1-ald-none.cells"
# The path by which Windows programs know the company.
sed -i '1s|"company":"[^"]*"|"company":"C:\\\\Books\\\\nursery.qbw"|' "$recordings/1.1-ald-none.jsonl"

printed=$root$work/speed.txt
Windows 300 krnqb_speed_tests.exe --gtest_color=no >"$printed" 2>&1 ||
  { grep -vE '^\[ +(RUN|OK) |^\[---' "$printed"; Fail "krnqb_speed_tests"; }
[ "$(tail -n 1 "$printed" | tr -d '\r')" = "end of the repetitions" ] || Fail "krnqb_speed_tests did not finish"
tr -d '\r' <"$printed" | grep -E '^(create|createThroughRegistry|import|importWithHost) '
