# shellcheck shell=bash
# Hundreds of imports in one process, and of loads of the library: nothing it holds may grow. Everyday a few suffice.
source ./suites/registered.sh

export KRNQB_REPETITIONS=50
if [ "${KRNQB_NIGHTLY:-}" = 1 ]; then KRNQB_REPETITIONS=500; fi
Register KRN6_QB2002.dll KRN6_TestProcessor.dll
Built krnqb_soak_tests.exe
Stage "$area/recordings"
printed=$root$work/soak.txt
Windows 550 krnqb_soak_tests.exe --gtest_color=no >"$printed" 2>&1 ||
  { grep -vE '^\[ +(RUN|OK) |^\[---' "$printed"; Fail "krnqb_soak_tests"; }
[ "$(tail -n 1 "$printed" | tr -d '\r')" = "end of the repetitions" ] || Fail "krnqb_soak_tests did not finish"
grep -E ' after [0-9]+ and |suites? ran' "$printed"
