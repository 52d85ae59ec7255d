#!/usr/bin/env bash
# usage: desktop_test.sh PROGRAM MODULE
#
# Reads the dynamic sections of the built program and of the module with its dialogs. Fails if the program needs a
# library of a desktop, or if the module has a copy of code that is the program's.
set -euo pipefail
program=$1
module=$2
desktop='libQt|libxcb|libX11|libGL|libwayland'

Needed() { readelf --wide --dynamic "$1" | sed -nE 's/.*\(NEEDED\).*\[(.*)\]/\1/p'; }

if Needed "$program" | grep -E "$desktop"; then
  echo "$program needs the libraries above, so that it starts only where a desktop is installed"
  exit 1
fi
if ! Needed "$module" | grep -qE "$desktop"; then
  echo "$module needs no library of a desktop: it shows no dialogs"
  exit 1
fi

# Functions that are not inline and not of the toolkit itself.
copies=$(nm --dynamic --demangle --defined-only "$module" | grep -E '^[0-9a-f]+ [TDBR] ' | grep -E ' krnqb::' |
  grep -vE ' krnqb::ui::qt::' || true)
if [ -n "$copies" ]; then
  printf '%s\n%s has copies of the above, which are in the program\n' "$copies" "$module"
  exit 1
fi
functions=$(nm --dynamic --demangle --defined-only "$module" | grep -cE ' T Krnqb')
if [ "$functions" -ne 1 ]; then
  echo "$module exports $functions functions with C linkage, expected 1"
  exit 1
fi
