#!/usr/bin/env bash
# usage: library_check.sh ARCHITECTURE LIBRARY|PROGRAM
#
# Reads the headers of a cross-built library or program. Fails if it
#   - exports anything other than the four entry points of an automation server; a program: anything,
#   - imports a function that Windows 7 does not have (type_library/windows_7_functions.txt), or calls itself fit for
#     another Windows,
#   - can be loaded at a predictable address, can execute data, or has no stack protector.
set -euo pipefail
architecture=$1
library=$2
functions=$(dirname "$0")/type_library/windows_7_functions.txt

headers=$("$architecture-w64-mingw32-objdump" -p "$library")
failures=()

# Listed AWK-PROGRAM: prints what the program selects from the headers, sorted.
Listed() { awk "$1" <<<"$headers" | LC_ALL=C sort -u; }

# Header NAME: prints the value of a header.
Header() { awk -v name="$1" '$1 == name { print $2; exit }' <<<"$headers"; }

case $library in
  *.exe) expected= what="exports nothing" least=50 ;;
  *)
    expected=$(printf '%s\n' DllCanUnloadNow DllGetClassObject DllRegisterServer DllUnregisterServer)
    what="exports the four entry points" least=100
    ;;
esac
exports=$(Listed '/\[Ordinal\/Name Pointer\] Table/ { listing = 1; next } listing && NF == 0 { exit }
                  listing { print $NF }')
if [ "$exports" != "$expected" ]; then failures+=("it exports ${exports//$'\n'/ }: it should be one that $what"); fi

imports=$(Listed '/DLL Name:/ { library = toupper($NF) } /^\t[0-9a-f]+\t +[0-9]+  / { print library, $NF }')
newer=$(LC_ALL=C comm -23 <(echo "$imports") <(grep -v '^#' "$functions"))
if [ "$(wc -l <<<"$imports")" -lt $least ]; then failures+=("only these imports were found: $imports"); fi
if [ -n "$newer" ]; then failures+=("it imports what Windows 7 may lack: ${newer//$'\n'/, }"); fi
for header in MajorOSystemVersion:6 MinorOSystemVersion:1 MajorSubsystemVersion:6 MinorSubsystemVersion:1; do
  name=${header%:*}
  if [ "$(Header "$name")" != "${header#*:}" ]; then failures+=("its $name is $(Header "$name"), not ${header#*:}"); fi
done

properties=(DYNAMIC_BASE NX_COMPAT)
if [ "$architecture" = x86_64 ]; then properties+=(HIGH_ENTROPY_VA); fi
for property in "${properties[@]}"; do
  grep -qE "^[[:space:]]+$property\$" <<<"$headers" || failures+=("it is not $property")
done
grep -q 'Base Relocation' <<<"$headers" || failures+=("it has no relocations, so that its address is fixed")
# The guard ends the process with this text of its own, which is linked only if functions check the guard.
grep -qaF 'KRN6_QB2002: a function wrote past its own variables' "$library" || failures+=("it has no stack protector")

if [ ${#failures[@]} -ne 0 ]; then
  printf '%s\n' "${failures[@]/#/$library: }" >&2
  exit 1
fi
libraries=$(cut -d' ' -f1 <<<"$imports" | LC_ALL=C sort -u)
printf '%s is hardened, %s and needs Windows 7 alone: %s\n' "$(basename "$library")" "$what" "${libraries//$'\n'/ }"
