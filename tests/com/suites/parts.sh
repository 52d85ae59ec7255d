# shellcheck shell=bash
# Parts of the library, tested on their own.
Built krnqb_parts_tests.exe
Stage "$tree/docs/host-guide.md"
Windows 60 krnqb_parts_tests.exe --gtest_color=no >"$root$work/parts.txt" 2>&1 ||
  { grep -vE '^\[ +(RUN|OK) ' "$root$work/parts.txt"; Fail "krnqb_parts_tests"; }
[ "$(tail -n 1 "$root$work/parts.txt" | tr -d '\r')" = "end of the parts" ] || Fail "krnqb_parts_tests did not finish"
grep -E 'suites? ran' "$root$work/parts.txt"
