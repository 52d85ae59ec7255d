# shellcheck shell=bash
# What the library shows, on a display of the suite's own, which is there before any Windows program starts.
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
