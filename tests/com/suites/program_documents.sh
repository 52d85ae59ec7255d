# shellcheck shell=bash
# Every command of the documents, run with krnqb.exe.
source ./suites/both_systems.sh
programs=$root$work/programs
documents=$root$work/documents
mkdir -p "$programs" "$documents"
ProgramAsScript "$programs/krnqb"
"$tree/tests/package/readme_test.sh" "$tree" "$programs" "$documents" >"$root$work/documents.txt" 2>&1 ||
  { tail -n 30 "$root$work/documents.txt"; Fail "a command of the documents"; }
grep -c '\$ krnqb' "$root$work/documents.txt" | sed 's/$/ commands of the documents ran with krnqb.exe/'
