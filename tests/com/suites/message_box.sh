# shellcheck shell=bash
# The library's message box, on a display of the suite's own, started before any Windows program.
source ./suites/registered.sh

StartDisplay
Register KRN6_QB2002.dll
Built krnqb_com_tests.exe
printed=$(Windows 60 krnqb_com_tests.exe --gtest_color=no '--gtest_filter=MessageBoxes.*' | tr -d '\r') || true
if [ "$(tail -n 1 <<<"$printed")" != "end of the client" ]; then
  echo "$printed"
  Fail "the message box"
fi
grep -E '^\[  PASSED  \] [1-9]' <<<"$printed"
