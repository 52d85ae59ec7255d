#!/usr/bin/env bash
# usage: installed_files.sh FOLDER
#
# Prints, as macros for krnqb.nsi, how the files in FOLDER are installed and how exactly these are removed.
set -euo pipefail
cd "$1"

# Backslashes: reads names, prints them as Windows writes them.
Backslashes() { sed -e 's#/#\\#g' -e 's#[$]#$$#g'; }
folders=$(find . -type d | LC_ALL=C sort)

echo '!macro InstallFiles'
while read -r folder; do
  name=$(Backslashes <<<"${folder#.}")
  echo "  SetOutPath \"\$INSTDIR$name\""
  find "$PWD${folder#.}" -maxdepth 1 -type f | LC_ALL=C sort | sed 's#.*#  File "&"#'
done <<<"$folders"
echo '!macroend'
echo '!macro RemoveFiles'
find . -type f | LC_ALL=C sort | Backslashes | sed 's#^\.\(.*\)#  Delete "$INSTDIR\1"#'
LC_ALL=C sort -r <<<"$folders" | Backslashes | sed -n 's#^\.\(..*\)#  RMDir "$INSTDIR\1"#p'
echo '!macroend'
