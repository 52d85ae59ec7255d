#!/usr/bin/env bash
# usage: library_check.sh ARCHITECTURE LIBRARY
#
# Fails if a cross-built library exports anything other than the four entry points of an automation server, or needs a
# library that does not come with every Windows.
set -euo pipefail
architecture=$1
library=$2

headers=$("$architecture-w64-mingw32-objdump" -p "$library")

# Listed AWK-PROGRAM: prints what the program selects from the headers, sorted.
Listed() { awk "$1" <<<"$headers" | LC_ALL=C sort; }

exports=$(Listed '/\[Ordinal\/Name Pointer\] Table/ { listing = 1; next } listing && NF == 0 { exit }
                  listing { print $NF }')
imports=$(Listed '/DLL Name:/ { print toupper($NF) }' | LC_ALL=C sort -u)
system=$(printf '%s\n' ADVAPI32.DLL COMCTL32.DLL COMDLG32.DLL GDI32.DLL KERNEL32.DLL MSVCRT.DLL OLE32.DLL OLEAUT32.DLL \
  SHELL32.DLL USER32.DLL)

expected=$(printf '%s\n' DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer)
if [ "$exports" != "$expected" ]; then
  printf '%s exports\n%s\ninstead of the four entry points\n' "$library" "$exports" >&2
  exit 1
fi
foreign=$(LC_ALL=C comm -23 <(echo "$imports") <(echo "$system"))
if [ -z "$imports" ] || [ -n "$foreign" ]; then
  printf '%s needs what is no part of the system: %s\n' "$library" "${foreign:-(no imports found)}" >&2
  exit 1
fi
printf '%s exports the four entry points and needs the system alone: %s\n' "$(basename "$library")" "${imports//$'\n'/ }"
