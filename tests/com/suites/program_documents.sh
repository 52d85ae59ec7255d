# shellcheck shell=bash
# Every command of the documents, run with krnqb.exe.
Built krnqb.exe
programs=$root$work/programs
documents=$root$work/documents
mkdir -p "$programs" "$documents"
# The commands are those of a shell of this system, in which krnqb is krnqb.exe in the folder where it is called.
{
  echo '#!/usr/bin/env bash'
  declare -p root work home tellingNames wineArchitecture wineServer wineProgram
  declare -f InSystem
  echo 'InSystem "$work/prefix" "${PWD#"$root"}" "$wineProgram" "$work/stage/krnqb.exe" "$@"'
} >"$programs/krnqb"
chmod +x "$programs/krnqb"
"$tree/tests/package/readme_test.sh" "$tree" "$programs" "$documents" >"$root$work/documents.txt" 2>&1 ||
  { tail -n 30 "$root$work/documents.txt"; Fail "a command of the documents"; }
grep -c '\$ krnqb' "$root$work/documents.txt" | sed 's/$/ commands of the documents ran with krnqb.exe/'
