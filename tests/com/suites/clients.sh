# shellcheck shell=bash
# The clients written in C++, each group in its own process: with everything the library needs, then with parts missing.
source ./suites/registered.sh

# Client FILTER: runs the tests that match.
Client() {
  local printed=$root$work/client.txt
  Windows 300 krnqb_com_tests.exe --gtest_color=no "--gtest_filter=$1" >"$printed" 2>&1 ||
    { grep -vE '^\[ +(RUN|OK) |^\[---' "$printed"; Fail "krnqb_com_tests, $1"; }
  [ "$(tail -n 1 "$printed" | tr -d '\r')" = "end of the client" ] || Fail "krnqb_com_tests, $1, did not finish"
  grep -qE '^\[  PASSED  \] [1-9]' "$printed" || Fail "there are no tests $1"
  grep -E 'suites? ran' "$printed"
}

Register KRN6_QB2002.dll KRN6_TestProcessor.dll
Built krnqb_com_tests.exe
Stage "$area/recordings" "$tree/docs/host-guide.md"
Client '-WithoutDocuments.*:WithoutProcessor.*:MessageBoxes.*'

withoutLibraries=msxml,msxml2,msxml3,msxml4,msxml6
Client 'WithoutDocuments.*'
withoutLibraries=

Windows 60 regsvr32 /s /u KRN6_TestProcessor.dll
Client 'WithoutProcessor.*'
