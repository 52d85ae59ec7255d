#!/usr/bin/env bash
# usage: help_test.sh TREE PROGRAM MAN-PAGE COMPLETION
#
# Holds the man page and the completion for bash to the commands and options that the source declares.
set -euo pipefail
tree=$1
built=$2
manPage=$3
completion=$4
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
failed=no

Fault() {
  echo "$*" >&2
  failed=yes
}

# What the source declares: options, and commands with their families.
source=$tree/src/cli/command_line.cpp
options=$(grep -oE '"--[a-z-]+"' "$source" | tr -d '"' | sort -u)
commands=$(tr -d '\n' <"$source" | grep -oE 'Add<[A-Za-z]+>\([a-z_]+, +"[a-z-]+"' |
  sed -E 's/.*\(([a-z_]+), +"(.*)"/\1 \2/; s/^program_ //' | sort -u)
if [ "$(wc -l <<<"$options")" -lt 30 ] || [ "$(wc -l <<<"$commands")" -lt 19 ]; then
  Fault "$source: found only $(wc -l <<<"$options") options and $(wc -l <<<"$commands") commands"
fi

# The text of the man page, without the marks of roff.
sed -E 's/\\-/-/g; s/\\[a-z]|\\\(aq//g' "$manPage" >"$folder/page"
while read -r option; do
  grep -qE -- "^\.B $option( |$)" "$folder/page" || [ "$option" = --version ] || Fault "$manPage: $option is missing"
done <<<"$options"
while read -r command; do
  grep -qxF ".SS krnqb $command" "$folder/page" || Fault "$manPage: krnqb $command is missing"
done <<<"$commands"

# shellcheck source=packaging/krnqb.bash
source "$completion"
cd "$folder"
touch nursery.qbw "two words.qbw"
mkdir new

# Takes the place of the program that the completion asks: each help is printed by the program once.
krnqb() {
  local answer="$folder/$*.help"
  [ -e "$answer" ] || "$built" "$@" >"$answer"
  printf '%s\n' "$(<"$answer")"
}

# Complete WORD...: prints what bash would offer for the last word, one a line.
Complete() {
  COMP_WORDS=("$@")
  COMP_CWORD=$(($# - 1))
  _krnqb
  printf '%s\n' "${COMPREPLY[@]}"
}

# Offers EXPECTED WORD...: EXPECTED has blanks between the words that are offered, in any order.
Offers() {
  local expected=$1 offered
  shift
  offered=$(Complete "$@" | sort | tr '\n' ' ')
  expected=$(tr ' ' '\n' <<<"$expected" | sort | tr '\n' ' ')
  if [ "$offered" != "$expected" ]; then Fault "\"$*\" offers \"$offered\" instead of \"$expected\""; fi
}

Offers "plan" krnqb pl
Offers "new show export history diff undo" krnqb plan ""
Offers "undo" krnqb help plan u
Offers "" krnqb help plan undo ""
Offers "--balances" krnqb import --expenses --bal
Offers "none planned actual all" krnqb import --balances ""
Offers "planned" krnqb import --balances pl
Offers "ald bri cor" krnqb plan new x.kpf --product ""
Offers "transactions reports" krnqb import --amounts-from ""
Offers "income expense" krnqb accounts ""
Offers "options" krnqb dialog o
Offers "nursery.qbw" krnqb import --company nur
Offers "nursery.qbw" krnqb import --quickbooks nur
Offers "nursery.qbw" krnqb company load nur
Offers "nursery.qbw new" krnqb company info n
Offers "" krnqb import --plan-start ""
Offers "" krnqb nothing --
if [ "$(Complete krnqb company info tw)" != "two words.qbw" ]; then Fault "a file with a blank is not offered"; fi

# The options of every command are offered, and with them every option that there is.
while read -r command; do
  read -ra words <<<"$command"
  Complete krnqb "${words[@]}" -- >"$folder/ofCommand"
  grep -qxFe --help "$folder/ofCommand" || Fault "krnqb $command: its options are not offered"
  cat "$folder/ofCommand"
done <<<"$commands" >"$folder/offered"
Complete krnqb -- >>"$folder/offered"
while read -r option; do
  grep -qxFe "$option" "$folder/offered" || Fault "$option is not offered"
done <<<"$options"
[ "$failed" = no ]
