# shellcheck shell=bash
# What registration writes and unregistration removes: compares the registry before and after.
source ./suites/registered.sh
stage=$root$work/stage

# Registry FILE: writes the classes of all users and of this one, as Wine's server saves them on exit, without
# timestamps.
Registry() {
  StopServer "$work/prefix"
  awk '/^\[/ { inside = /^\[Software\\\\(Wow6432Node\\\\)?Classes/; sub(/\] [0-9]+$/, "]") } inside && !/^#time/' \
    "$root$work/prefix/system.reg" "$root$work/prefix/user.reg" >"$stage/$1"
  [ "$(wc -l <"$stage/$1")" -gt 1000 ] || Fail "the registry was not read"
}

# Regsvr32 RESULT ARGUMENT...
Regsvr32() {
  local expected=$1 result=0
  shift
  Windows 60 regsvr32 "$@" >/dev/null 2>&1 || result=$?
  [ "$result" -eq "$expected" ] || Fail "regsvr32 $* ended with $result, not $expected"
}

# Holds FILE KEY LINE: fails unless the registry in FILE has the line under the key, below the classes of all users.
Holds() {
  KEY="[Software\\\\Classes\\\\${2//\\/\\\\}]" LINE=$3 awk '
    /^\[/ { inside = tolower($0) == tolower(ENVIRON["KEY"]) }
    inside && index($0, ENVIRON["LINE"]) == 1 { found = 1 }
    END { exit !found }' "$stage/$1" || Fail "$1: $2 has no $3"
}
HasKey() { grep -qiF "\\${2//\\/\\\\}]" "$stage/$1"; }
# Quotes a value as the registry file does.
Quoted() { printf '"%s"' "${1//\\/\\\\}"; }

Built KRN6_QB2002.dll
class='CLSID\{4F6EC7B3-DE2F-4004-A533-2E2DB98E8741}'
library='TypeLib\{4B3004E5-CD6A-4BD7-B693-E722E2C2684B}'
if [ "$architecture" = x86_64 ]; then own=win64 other=win32; else own=win32 other=win64; fi

# Keys of another component beside ours.
Windows 60 reg add 'HKLM\Software\Classes\KRN6_QB2002.Other\CLSID' /ve /d '{00000000-0000-0000-0000-000000000001}' /f >/dev/null
Registry before.txt
Regsvr32 0 /s KRN6_QB2002.dll
Registry registered.txt
path=$(Windows 60 winepath -w "$work/stage/KRN6_QB2002.dll" | tr -d '\r')
Holds registered.txt "$class\\InprocServer32" "@=$(Quoted "$path")"
Holds registered.txt "$class\\InprocServer32" '"ThreadingModel"="Apartment"'
Holds registered.txt "$class\\ProgID" '@="KRN6_QB2002.QBDataExchange.1"'
Holds registered.txt "$class\\VersionIndependentProgID" '@="KRN6_QB2002.QBDataExchange"'
Holds registered.txt "$class\\TypeLib" '@="{4B3004E5-CD6A-4BD7-B693-E722E2C2684B}"'
Holds registered.txt "$class\\Version" '@="'
HasKey registered.txt "$class\\Programmable" || Fail "not programmable"
for name in 'QBDataExchange {4F6EC7B3-DE2F-4004-A533-2E2DB98E8741}' 'cSubtotals {DC050EF2-33AA-4B21-9B98-A1AE9FC64C66}'; do
  identifier=${name#* }
  name=KRN6_QB2002.${name% *}
  Holds registered.txt "$name\\CurVer" "@=\"$name.1\""
  Holds registered.txt "$name\\CLSID" "@=\"$identifier\""
  Holds registered.txt "$name.1\\CLSID" "@=\"$identifier\""
  Holds registered.txt "CLSID\\$identifier\\InprocServer32" "@=$(Quoted "$path")"
done
Holds registered.txt 'Interface\{B52A3CD4-2724-4322-8C8D-28FD003FEE7F}\ProxyStubClsid32' '@="{00020424-0000-0000-C000-000000000046}"'
Holds registered.txt 'Interface\{8A432835-FB07-45C0-8415-FA5FEE04C020}\ProxyStubClsid32' '@="{00020420-0000-0000-C000-000000000046}"'
Holds registered.txt "$library\\1.0\\0\\$own" "@=$(Quoted "$path")"

# Registering twice changes nothing; unregistering leaves nothing behind.
Regsvr32 0 /s KRN6_QB2002.dll
Registry again.txt
cmp "$stage/registered.txt" "$stage/again.txt" || Fail "registering twice changed the registry"
Regsvr32 0 /s /u KRN6_QB2002.dll
Registry after.txt
diff "$stage/before.txt" "$stage/after.txt" || Fail "unregistration did not restore the registry"
Regsvr32 0 /s /u KRN6_QB2002.dll

# While the other architecture's library is registered too, the shared keys stay.
Windows 60 reg add "HKLM\\Software\\Classes\\$library\\1.0\\0\\$other" /ve /d 'C:\other.dll' /f >/dev/null
Regsvr32 0 /s KRN6_QB2002.dll
Regsvr32 0 /s /u KRN6_QB2002.dll
Registry shared.txt
Holds shared.txt "$library\\1.0\\0\\$other" '@="C:\\other.dll"'
Holds shared.txt 'KRN6_QB2002.QBDataExchange\CurVer' '@="KRN6_QB2002.QBDataExchange.1"'
if HasKey shared.txt "$library\\1.0\\0\\$own"; then Fail "the path of the library was not removed"; fi
if HasKey shared.txt "$class\\InprocServer32"; then Fail "the class was not removed"; fi

# A path with blanks and non-ASCII letters.
mkdir -p "$stage/café und  blanks"
cp "$stage/KRN6_QB2002.dll" "$stage/café und  blanks/"
Regsvr32 0 /s 'café und  blanks\KRN6_QB2002.dll'
Registry elsewhere.txt
folder=${path%KRN6_QB2002.dll}
Holds elsewhere.txt "$class\\InprocServer32" "@=\"${folder//\\/\\\\}caf\\xe9 und  blanks\\\\KRN6_QB2002.dll\""
Regsvr32 0 /s /u 'café und  blanks\KRN6_QB2002.dll'

Regsvr32 3 /s missing.dll
echo "registration and unregistration leave the registry as it was"
