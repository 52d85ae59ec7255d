#!/usr/bin/env bash
# usage: hardening_test.sh BUILD-TYPE PROGRAM...
#
# Reads the headers of built programs. Fails if the compiler or the linker left out one of the protections of
# cmake/hardening.cmake.
set -euo pipefail
buildType=$1
shift
failed=no

Missing() {
  echo "$program: $1 is missing"
  failed=yes
}

# Require PROTECTION PATTERN TEXT: reports the program unless a line of TEXT matches.
Require() { grep -qE "$2" <<<"$3" || Missing "$1"; }

for program; do
  header=$(readelf --wide --file-header "$program")
  segments=$(readelf --wide --segments "$program")
  dynamic=$(readelf --wide --dynamic "$program")
  symbols=$(readelf --wide --dyn-syms "$program")

  Require "position independence" '^ +Type: +DYN' "$header"
  Require "position independence" 'FLAGS_1.*\bPIE\b' "$dynamic"
  Require "RELRO" '^ +GNU_RELRO ' "$segments"
  Require "immediate binding" 'FLAGS_1.*\bNOW\b' "$dynamic"
  Require "a stack that is not executable" '^ +GNU_STACK .* RW +0x' "$segments"
  Require "the standard library's checks" '__glibcxx_assert_fail' "$symbols"
  Require "the stack protector" '__stack_chk_fail@' "$symbols"
  # Every function that may be called indirectly begins with this instruction. The header says so only where the
  # system's own start code is built that way too.
  if grep -q 'X86-64' <<<"$header"; then
    landings=$(LC_ALL=C grep -oaP '\xf3\x0f\x1e\xfa' "$program" | wc -l)
    if [ "$landings" -lt 1000 ]; then Missing "control-flow protection"; fi
  fi
  # Only optimised code checks the sizes of buffers.
  if [ "$buildType" = Release ]; then Require "_FORTIFY_SOURCE" '__[a-z]+_chk@' "$(grep -v __stack_chk <<<"$symbols")"; fi
done
[ "$failed" = no ]
