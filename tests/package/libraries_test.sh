#!/usr/bin/env bash
# usage: libraries_test.sh PROGRAM MODULE
#
# Reads the dynamic sections of the built program and of the module that writes workbooks. Fails if the program needs a
# library that few of its commands use: each one costs every command time at its start.
set -euo pipefail
program=$1
module=$2

Needed() { readelf --wide --dynamic "$1" | sed -nE 's/.*\(NEEDED\).*\[(.*)\]/\1/p'; }

everyCommand='^(libxxhash|libsqlite3|libnettle|libxml2|libutf8proc|libfmtd?|libstdc\+\+|libm|libgcc_s|libc|ld-linux.*)\.so'
if Needed "$program" | grep -vE "$everyCommand"; then
  echo "$program needs the libraries above, which not every command uses: put them into a module"
  exit 1
fi
if ! Needed "$module" | grep -E '^libxlsxwriter\.so' >/dev/null; then
  echo "$module does not need libxlsxwriter: it writes no workbooks"
  exit 1
fi

# What the module has of the core is its own.
exported=$(nm --dynamic --defined-only "$module" | grep -cE ' T Krnqb')
if [ "$exported" -ne 1 ]; then
  echo "$module exports $exported functions with C linkage, expected 1"
  exit 1
fi
if nm --dynamic --demangle --defined-only "$module" | grep -E ' [TDBRVW] krnqb::|(vtable|typeinfo).* for krnqb::'; then
  echo "$module exports the above, which the program has too"
  exit 1
fi
