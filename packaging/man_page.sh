#!/usr/bin/env bash
# usage: man_page.sh PROGRAM TEMPLATE PAGE NAME=VALUE...
#
# Writes the man page PAGE, and PAGE.gz: the template with @COMMANDS@ replaced by the help of every command of the
# program, and each other @NAME@ by its value.
set -euo pipefail
program=$1
template=$2
page=$3
shift 3

# Commands [COMMAND]: prints the names of the commands of the program or of a family of commands.
Commands() { "$program" help "$@" | awk '/^Commands:/ { inside = 1; next } /^$/ { inside = 0 } inside { print $1 }'; }

# Describe COMMAND...: prints what the help says about one command.
Describe() {
  "$program" help "$@" | awk -v name="krnqb $*" '
    # A text as roff has it: no character of it is an instruction.
    function Plain(text) {
      gsub(/\\/, "\\e", text)
      gsub(/-/, "\\-", text)
      gsub(/\047/, "\\(aq", text)
      return text ~ /^\./ ? "\\&" text : text
    }

    # The lines of a paragraph: examples and columns as they are, anything else as running text.
    function Paragraph(   i, columns) {
      if (count == 0) return
      for (i = 1; i <= count; i++) if (lines[i] ~ /^ |  /) columns = 1
      print ".PP"
      if (columns) print ".EX"
      for (i = 1; i <= count; i++) print Plain(lines[i])
      if (columns) print ".EE"
      count = 0
    }

    # "  --plan FILE (required)      Plan file": what is typed, then what it means.
    function Entry(line,   typed, meaning) {
      typed = line
      sub(/^ +/, "", typed)
      if (match(typed, /  +/)) {
        meaning = substr(typed, RSTART + RLENGTH)
        typed = substr(typed, 1, RSTART - 1)
      }
      print ".TP"
      print ".B " Plain(typed)
      if (meaning != "") print Plain(meaning)
    }

    NR == 1 { print ".SS " Plain(name); print Plain($0) "."; next }
    /^Usage: / { print ".PP"; print ".B " Plain(substr($0, 8)); next }
    /^(Options|Commands):$/ || (/^[A-Z][A-Za-z ]*:$/ && !/^(Examples|Requests):$/) {
      Paragraph()
      entries = 1
      if (!/^(Options|Arguments|Commands):$/) { print ".PP"; print Plain($0) }
      next
    }
    /^$/ { Paragraph(); entries = 0; next }
    entries && /^          / { sub(/^ +/, ""); print Plain($0); next }
    entries && /-h,--help/ { next }
    entries { Entry($0); next }
    { lines[++count] = $0 }
    END { Paragraph() }'
}

# DescribeAll: prints every command, families first, then what is in them.
DescribeAll() {
  local command inner
  for command in $(Commands); do
    if [ "$command" = help ]; then continue; fi
    if [ -z "$(Commands "$command")" ]; then
      Describe "$command"
    else
      for inner in $(Commands "$command"); do Describe "$command" "$inner"; done
    fi
  done
}

edits=()
for value; do edits+=(-e "s|@${value%%=*}@|${value#*=}|g"); done
commands=$(mktemp)
trap 'rm -f "$commands"' EXIT
DescribeAll >"$commands"
sed "${edits[@]}" -e "/^@COMMANDS@\$/ { r $commands
d }" "$template" >"$page"
gzip --best --no-name --keep --force "$page"
