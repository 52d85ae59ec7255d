#!/usr/bin/env bash
# usage: readme_test.sh TREE PROGRAMS FOLDER
#
# Runs every krnqb and cp line of the sh blocks of TREE/README.md, in order, in FOLDER, with the programs of the folder
# PROGRAMS: none may fail.
set -euo pipefail

tree=$1
programs=$2
folder=$3
rm -rf "$folder"
mkdir -p "$folder"
ln -s "$tree/samples" "$folder/samples"

awk '/^```sh$/ { inside = 1; next } /^```/ { inside = 0 } inside && /^(krnqb|cp) /' "$tree/README.md" >"$folder/commands"
count=$(wc -l <"$folder/commands")
if [ "$count" -lt 10 ]; then
  echo "README.md has $count commands: the reading of it must be wrong"
  exit 1
fi

cd "$folder"
PATH="$programs:$PATH"
while read -r command; do
  echo "\$ $command"
  bash -c "$command" </dev/null
done <commands
