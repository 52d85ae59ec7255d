# shellcheck shell=bash
# The dialogs as a user operates them, with mouse and keyboard, on a display of the suite's own.
source ./suites/shown.sh

Register KRN6_QB2002.dll KRN6_TestProcessor.dll
Built krnqb_dialog_host.exe krnqb_information_tool.exe krnqb_dialog_tests.exe
Stage "$area/recordings"
printed=$root$work/dialogs.txt
Windows 300 krnqb_dialog_tests.exe --gtest_color=no ${KRNQB_DIALOG_TESTS:+"--gtest_filter=$KRNQB_DIALOG_TESTS"} \
  >"$printed" 2>&1 || { grep -vE '^\[ +(RUN|OK) |^\[---' "$printed"; Fail "krnqb_dialog_tests"; }
[ "$(tail -n 1 "$printed" | tr -d '\r')" = "end of the person" ] || Fail "krnqb_dialog_tests did not finish"
grep -E 'suites? ran' "$printed"
