# shellcheck shell=bash
# Prints commands and what they print: an installation, an import from QuickBooks, whose place the test processor takes,
# a comparison with the books, an undo, and the removal. KRNQB_INSTALLER is the installer. Every command must end as it
# does for a user.
source ./suites/registered.sh
Register KRN6_TestProcessor.dll
books=$root$work/prefix/drive_c/Books
prepared=$root$work/prepared
mkdir -p "$books" "$prepared"
"$KRNQB_PROGRAM" company new "$prepared/nursery.qbw" --name "Hollow Creek Nursery" --fiscal-month January --processor 1.1 >/dev/null
"$KRNQB_PROGRAM" company load "$prepared/nursery.qbw" "$tree"/samples/nursery/*.xml >/dev/null
"$KRNQB_PROGRAM" record --company "$prepared/nursery.qbw" --plan-start 2003-01 --out "$prepared/recording.jsonl" --quiet
sed '1s|"company":"[^"]*"|"company":"C:\\\\Books\\\\nursery.qbw"|' "$prepared/recording.jsonl" >"$root$work/stage/recording.jsonl"
cp "$KRNQB_INSTALLER" "$prepared/nursery.qbw" "$books/"
cp "$tree/samples/plans/nursery-ald.kpf" "$books/nursery.kpf"
KRNQB_RECORDING=$(Windows 60 winepath -w "$work/stage/recording.jsonl" | tr -d '\r')
export KRNQB_RECORDING

# Run CODE COMMAND: prints a command and its output as a command window shows them. Each command has a new window: what
# is installed is on its search path.
Run() {
  local expected=$1 code=0 output
  printf 'C:\\Books> %s\n' "$2"
  printf '@cd /d C:\\Books\r\n@%s\r\n@exit %%errorlevel%%\r\n' "$2" >"$root$work/stage/command.bat"
  output=$(Windows 120 cmd /c command.bat 2>&1) || code=$?
  InSystem "$work/prefix" / timeout 60 "$wineServer" -w || Fail "$2: something it has started is still running"
  if [ -n "$output" ]; then tr -d '\r' <<<"$output"; fi
  [ $code = "$expected" ] || Fail "$2 ended with $code, not $expected"
}

Run 0 "$(basename "$KRNQB_INSTALLER") /S"
Run 0 'krnqb --version'
Run 0 'krnqb import --quickbooks --plan nursery.kpf --expenses --income --balances actual'
Run 4 'krnqb reconcile --company nursery.qbw --plan nursery.kpf'
Run 0 'krnqb plan undo nursery.kpf'
Run 0 '"C:\Program Files\krnqb\uninstall.exe" /S'
[ ! -e "$root$work/prefix/drive_c/Program Files/krnqb" ] || Fail "the uninstaller has left its folder"
# Wine's number for a command that is not found.
Run 49 'krnqb --version'
