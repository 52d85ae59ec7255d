#!/usr/bin/env bash
# usage: readme_test.sh TREE PROGRAMS FOLDER
#
# Runs every krnqb and cp line in the sh blocks of README.md and docs/commands.md, in order, each document in a folder of
# its own below FOLDER, with the programs of the folder PROGRAMS. Fails if a line fails.
set -euo pipefail

tree=$1
programs=$2
folder=$3
PATH="$programs:$PATH"

# RunDocument DOCUMENT NUMBER: fails if the document has fewer lines than NUMBER, since then they were not found.
RunDocument() {
  local document=$1 least=$2 place=$folder/$1 count command
  mkdir -p "$place"
  cp -r "$tree/samples" "$place/samples"
  awk '/^```sh$/ { inside = 1; next } /^```/ { inside = 0 } inside && /^(krnqb|cp) /' "$tree/$document" >"$place/lines"
  count=$(wc -l <"$place/lines")
  if [ "$count" -lt "$least" ]; then
    echo "$document: found $count commands, expected at least $least"
    return 1
  fi
  cd "$place"
  while read -r command; do
    echo "$document: \$ $command"
    bash -c "$command" </dev/null
  done <lines
}

rm -rf "$folder"
RunDocument README.md 8
RunDocument docs/commands.md 20
