# shellcheck shell=bash
# The installer of this width: what it puts where, what it refuses, and that its uninstaller leaves nothing behind. The
# registry and the files of the whole system are compared before and after.
stage=$root$work/stage
drive=$root$work/prefix/drive_c
outputs=$root$work/outputs
mkdir -p "$outputs"
if [ "$architecture" = x86_64 ]; then width=x64 bits=64 name=krnqb; else width=x86 bits=32 name='krnqb (32-bit)'; fi
version=$("$tree/packaging/windows/version.sh")
export SOURCE_DATE_EPOCH=1000000000

# Installer VERSION FOLDER FILE: makes an installer of the files in FOLDER.
Installer() {
  "$tree/packaging/windows/installed_files.sh" "$2" >"$outputs/files.nsh"
  makensis -V1 -INPUTCHARSET UTF8 -DVERSION="$1" -DWIDTH=$width -DBITS=$bits -DSIZE=1 -DFILES="$outputs/files.nsh" \
    -DHELPER="$programs/krnqb_setup.exe" -DOUTPUT="$3" "$tree/packaging/windows/krnqb.nsi"
}

# Snapshot NAME: writes the registry as Wine's server saves it on exit, and the names and sizes of all files. Without
# times, and without what Wine writes at each start.
Snapshot() {
  StopServer "$work/prefix"
  sed -E -e '/^#time|^"DriverDateData"/d' -e 's/^(\[.*\]) [0-9]+$/\1/' "$root$work/prefix"/{system,user}.reg >"$outputs/$1.reg"
  (cd "$drive" && find . -type f -printf '%p %s\n' -o -printf '%p\n' | LC_ALL=C sort) >"$outputs/$1.files"
  [ "$(wc -l <"$outputs/$1.reg")" -gt 1000 ] || Fail "the registry was not read"
}
Unchanged() {
  local kind
  for kind in reg files; do
    diff "$outputs/$1.$kind" "$outputs/$2.$kind" || Fail "$3: the difference above"
  done
}

# Value FILE KEY NAME: prints a value as the registry's file has it; fails if it is missing.
Value() {
  KEY="[${2//\\/\\\\}]" NAME="\"$3\"=" awk '
    /^\[/ { inside = tolower($0) == tolower(ENVIRON["KEY"]) }
    inside && index(tolower($0), tolower(ENVIRON["NAME"])) == 1 { print substr($0, length(ENVIRON["NAME"]) + 1); found = 1 }
    END { exit !found }' "$outputs/$1.reg" || Fail "$1: $2 has no $3"
}
Expect() { [ "$1" = "$2" ] || Fail "$3 is $1, not $2"; }
# Quoted TEXT: as the registry's file has it.
Quoted() {
  local text=${1//\\/\\\\}
  printf '"%s"' "${text//\"/\\\"}"
}

# Setup CODE PROGRAM [ARGUMENT...]: runs an installer or uninstaller and waits for what it starts.
Setup() {
  local expected=$1 code=0
  shift
  Windows 120 "$@" >"$outputs/setup.out" 2>"$outputs/setup.err" || code=$?
  InSystem "$work/prefix" / timeout 60 "$wineServer" -w || Fail "$*: something it has started is still running"
  [ $code = "$expected" ] || Fail "$* ended with $code, not $expected: $(cat "$outputs/setup.err")"
}
# Says TEXT: the last installer's message.
Says() { grep -qF "$1" "$outputs/setup.err" || Fail "the message is: $(cat "$outputs/setup.err")"; }

# Restart: an uninstaller runs from a copy of itself, which Windows removes at its next start. Of the copy's folder Wine
# removes only the content.
Restart() {
  Windows 60 wineboot
  StopServer "$work/prefix"
  find "$drive/users" -path '*/Temp/~nsu*.tmp' -type d -empty -delete
}

# Uninstall SNAPSHOT: runs the silent command that this snapshot's list of programs has.
Uninstall() {
  local command
  command=$(Value "$1" "$entry" QuietUninstallString | sed -E 's/^"|"$//g; s/\\(.)/\1/g')
  printf '@%s\r\n' "$command" >"$stage/uninstall.bat"
  Setup 0 cmd /c uninstall.bat
  rm "$stage/uninstall.bat"
}

entry="Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\krnqb-$width"
machinePath='System\CurrentControlSet\Control\Session Manager\Environment'
class='Software\Classes\CLSID\{4F6EC7B3-DE2F-4004-A533-2E2DB98E8741}'

"$tree/packaging/windows/make_packages.sh" "$architecture" "$(dirname "$programs")" "$outputs"
installer=krnqb-$version-windows-$width-setup.exe
Stage "$outputs/$installer"
(cd "$outputs" && cmake -E tar xf "krnqb-$version-windows-$width.zip")
shipped=$outputs/krnqb-$version-windows-$width
cat >"$stage/host.vbs" <<'EOF'
Set exchange = WScript.CreateObject("KRN6_QB2002.QBDataExchange")
exchange.QBCompany = "C:\Books\nursery.qbw"
WScript.Echo exchange.QBCompany
WScript.Quit 0
EOF
# Wine's script host cannot sleep.
cat >"$stage/holding.vbs" <<'EOF'
Set files = CreateObject("Scripting.FileSystemObject")
Set exchange = WScript.CreateObject("KRN6_QB2002.QBDataExchange")
files.CreateTextFile("held").Close
Do While files.FileExists("held")
Loop
WScript.Quit 0
EOF

# The script host enters itself into the registry when it runs for the first time.
echo 'WScript.Quit 0' >"$stage/nothing.vbs"
Windows 60 cscript //nologo nothing.vbs
user=$(Windows 60 cmd /c 'echo %USERNAME%' | tr -d '\r')
# Every user of Windows has this key; in Wine nobody has.
Windows 60 reg add 'HKCU\Software\Classes' /f >/dev/null
Restart
Snapshot before
pathBefore=$(Value before "$machinePath" PATH)

echo "-- for all users"
Setup 0 "$installer" /S
Snapshot machine
folder="C:\\Program Files\\$name"
diff -r "$shipped" "$drive/Program Files/$name" | sed 's/^/  /' >"$outputs/difference" || true
Expect "$(cat "$outputs/difference")" "  Only in $drive/Program Files/$name: uninstall.exe" "the difference to the zip"
Expect "$(Value machine "$entry" DisplayName)" "\"krnqb $version ($bits-bit)\"" DisplayName
Expect "$(Value machine "$entry" DisplayVersion)" "\"$version\"" DisplayVersion
Expect "$(Value machine "$entry" Publisher)" '"Korrin Software"' Publisher
Expect "$(Value machine "$entry" UninstallString)" "$(Quoted "\"$folder\\uninstall.exe\" /AllUsers")" UninstallString
kilobytes=$(($(Value machine "$entry" EstimatedSize | sed 's/^dword:/0x/')))
[ $kilobytes -gt 10000 ] || Fail "EstimatedSize is $kilobytes"
Expect "$(Value machine "$machinePath" PATH)" "${pathBefore%\"};${folder//\\/\\\\}\"" "the search path"
Expect "$(sed -n '/\[Software\\\\Classes\\\\KRN6/p' "$outputs/machine.reg" | wc -l)" 10 "the number of keys of program names"
Windows 60 regsvr32 /s "$folder\\KRN6_QB2002.dll"
Snapshot registered
Unchanged machine registered "the library itself registers otherwise than the installer"
Expect "$(Windows 60 cmd /c 'krnqb.exe --version' | tr -d '\r')" "krnqb $version" "what the search path finds"
Script 60 'C:\Books\nursery.qbw' host.vbs || Fail "a host does not create the component"

echo "-- while it is used"
Windows 120 cscript //nologo holding.vbs >"$outputs/holding" 2>&1 &
holder=$!
for ((waited = 0; waited < 100; ++waited)); do [ -e "$stage/held" ] || sleep 0.1; done
[ -e "$stage/held" ] || Fail "no host holds the library"
# With the folder behind _?= the uninstaller runs in its place, so that its end can be waited for.
for command in "$installer /S" "\"$folder\\uninstall.exe\" /S _?=$folder"; do
  printf '@%s\r\n@exit %%errorlevel%%\r\n' "$command" >"$stage/refused.bat"
  code=0
  Windows 60 cmd /c refused.bat >"$outputs/setup.out" 2>"$outputs/setup.err" || code=$?
  Expect $code 2 "the exit code of $command"
  Says "$folder\\KRN6_QB2002.dll is in use or write-protected. Close the programs that use it and try again."
done
rm "$stage/held"
wait $holder
Snapshot held
Unchanged machine held "an installer that was refused has changed something"

echo "-- again, and removed"
Setup 0 "$installer" /S /AllUsers
Snapshot again
Unchanged machine again "installing again changed something"
Uninstall machine
Restart
Snapshot after
Unchanged before after "the uninstaller has left something behind"

echo "-- for one user, replacing an earlier version in a folder of the user's choice"
mkdir "$outputs/earlier"
echo earlier | tee "$outputs/earlier/krnqb.exe" >"$outputs/earlier/of this version alone.txt"
Installer 0.9.0 "$outputs/earlier" "$stage/earlier.exe"
Setup 0 earlier.exe /S /CurrentUser
Snapshot user-default
Expect "$(Value user-default "$entry" InstallLocation)" "$(Quoted "C:\\users\\$user\\AppData\\Local\\Programs\\$name")" "the user's folder"
Expect "$(Value user-default Environment Path)" "str(2):\"C:\\\\users\\\\$user\\\\AppData\\\\Local\\\\Programs\\\\$name\"" "the user's search path"
Uninstall user-default
Restart
Snapshot after-default
Unchanged before after-default "the user's uninstaller has left something behind"

# A search path longer than any text of an installer. Wine passes none of this length to programs: only the value is
# compared.
longPath=
for number in {1..150}; do longPath+="C:\\Tools\\number $number\\bin;"; done
Windows 60 reg add 'HKCU\Environment' /v PATH /t REG_SZ /d "$longPath;" /f >/dev/null
Snapshot before-user
longPath=$(Value before-user Environment PATH)
[ ${#longPath} -gt 3000 ] || Fail "the search path has only ${#longPath} characters"
Setup 0 earlier.exe /S /CurrentUser '/D=C:\Books\Tools\krnqb'
Snapshot earlier
Expect "$(Value earlier "$entry" DisplayVersion)" '"0.9.0"' DisplayVersion
[ -e "$drive/Books/Tools/krnqb/of this version alone.txt" ] || Fail "/D= was ignored"
Setup 0 "$installer" /S /CurrentUser
Snapshot user
Expect "$(Value user "$entry" DisplayVersion)" "\"$version\"" DisplayVersion
Expect "$(Value user "$entry" UninstallString)" "$(Quoted '"C:\Books\Tools\krnqb\uninstall.exe" /CurrentUser')" UninstallString
diff -r "$shipped" "$drive/Books/Tools/krnqb" | sed 's/^/  /' >"$outputs/difference" || true
Expect "$(cat "$outputs/difference")" "  Only in $drive/Books/Tools/krnqb: uninstall.exe" "the difference to the zip"
Expect "$(Value user Environment Path)" "${longPath%\"};C:\\\\Books\\\\Tools\\\\krnqb\"" "the user's search path"
# The user has the keys and values that all users have had, and these have none. Wine does not show a user's classes in
# HKEY_CLASSES_ROOT, so that no host can create the component here: only the keys are compared.
Added() {
  diff "$outputs/before.reg" "$outputs/$1.reg" | sed -n 's/^> //p' | grep -E 'KRN6|^@=|ThreadingModel|\\\\Classes|"Version"' |
    grep -viE '^"path"=' | sed "s#${2//\\/\\\\\\\\}#FOLDER#g" | tr '[:upper:]' '[:lower:]' | LC_ALL=C sort
}
diff <(Added machine "$folder") <(Added user 'C:\Books\Tools\krnqb') || Fail "the user's registration is not that of all users"
(($(Added user 'C:\Books\Tools\krnqb' | wc -l) > 60)) || Fail "the user's registration was not read"
if grep -q KRN6_QB2002 "$root$work/prefix/system.reg"; then Fail "the component is registered for all users too"; fi
Uninstall user
Restart
Snapshot after-user
Unchanged before-user after-user "the user's uninstaller has left something behind"

echo "-- files of the user in its folder stay"
Setup 0 earlier.exe /S /CurrentUser '/D=C:\Books\Tools\krnqb'
echo mine >"$drive/Books/Tools/krnqb/my plan.kpf"
Snapshot with-plan
Uninstall with-plan
Expect "$(cd "$drive" && find Books -type f)" "Books/Tools/krnqb/my plan.kpf" "what is left"
rm -r "$drive/Books"
Restart
Snapshot before-refusals

echo "-- Windows before 7"
for windows in winxp vista; do
  Windows 60 reg add 'HKCU\Software\Wine' /v Version /d $windows /f >/dev/null
  Setup 2 "$installer" /S
  Says "krnqb needs Windows 7 or later; nothing was installed."
done
Windows 60 reg delete 'HKCU\Software\Wine' /v Version /f >/dev/null
Snapshot refused
Unchanged before-refusals refused "a refused installer has changed something"
if [ "$architecture" = i686 ]; then
  echo "-- the 64-bit installer on 32-bit Windows"
  width=x64 bits=64
  Installer 0.9.0 "$outputs/earlier" "$stage/other-width.exe"
  code=0
  Windows 60 other-width.exe /S >"$outputs/setup.out" 2>&1 || code=$?
  [ $code != 0 ] || Fail "32-bit Windows runs the 64-bit installer"
  Snapshot other-width
  Unchanged before-refusals other-width "the 64-bit installer has changed something"
fi
echo "the installer leaves Windows as it was"
