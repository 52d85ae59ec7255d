#!/usr/bin/env bash
# usage: installed_files.sh FOLDER
#
# Prints, as macros for krnqb.nsi, how the files in FOLDER are installed and how exactly these are removed.
set -euo pipefail
cd "$1"

# Backslashes [PREFIX]: reads names, prints them as Windows writes them.
Backslashes() { sed -e 's#^\./##' -e 's#/#\\#g' -e 's#[$]#$$#g'; }
folders=$(find . -mindepth 1 -type d | LC_ALL=C sort)

echo '!macro InstallFiles'
{ echo .; printf '%s\n' "$folders"; } | while read -r folder; do
  name=$(Backslashes <<<"$folder")
  if [ "$folder" = . ]; then echo '  SetOutPath "$INSTDIR"'; else echo "  SetOutPath \"\$INSTDIR\\$name\""; fi
  find "$folder" -maxdepth 1 -type f | LC_ALL=C sort | sed -e 's#^\./##' -e "s#^#$PWD/#" -e 's#.*#  File "&"#'
done
echo '!macroend'
echo '!macro RemoveFiles'
find . -type f | LC_ALL=C sort | Backslashes | sed 's#.*#  Delete "$INSTDIR\\&"#'
LC_ALL=C sort -r <<<"$folders" | Backslashes | sed 's#.*#  RMDir "$INSTDIR\\&"#'
echo '!macroend'
