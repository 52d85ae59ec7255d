# shellcheck shell=bash
# Sourced by the tests of pages: TREE PROGRAM VIEWERS FOLDER become $tree, $krnqb, $VIEWERS and $folder, which is emptied
# and entered. Skips the test (exit status 77) where the browser or what drives it is missing.
tree=$1
krnqb=$2
export VIEWERS=$3
folder=$4

for program in node "${CHROMIUM:-/usr/bin/chromium}"; do
  if ! command -v "$program" >/dev/null; then
    echo "skipped: $program is not installed; script/viewers installs it"
    exit 77
  fi
done
if [ ! -e "$VIEWERS/node_modules/playwright-core" ] || [ ! -e "$VIEWERS/node_modules/axe-core" ]; then
  echo "skipped: what drives Chromium is not in $VIEWERS; script/viewers installs it"
  exit 77
fi

rm -rf "$folder"
mkdir -p "$folder"
cd "$folder"
