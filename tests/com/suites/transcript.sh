# shellcheck shell=bash
# Prints commands and what they print: an installation, an import, a comparison with the books, an undo, and the
# removal. KRNQB_INSTALLER is the installer. Every command must end as it does for a user.
stage=$root$work/stage
Stage "$KRNQB_INSTALLER"
cp "$tree"/samples/nursery/*.xml "$tree/samples/plans/nursery-ald.kpf" "$stage/"
mv "$stage/nursery-ald.kpf" "$stage/nursery.kpf"

# Run CODE COMMAND: prints a command and its output as a command window shows them. Each command is a new window's: what
# has been installed is on its search path.
Run() {
  local expected=$1 code=0 output
  printf 'C:\\Books> %s\n' "$2"
  printf '@%s\r\n@exit %%errorlevel%%\r\n' "$2" >"$stage/command.bat"
  output=$(Windows 120 cmd /c command.bat 2>&1) || code=$?
  InSystem "$work/prefix" / timeout 60 "$wineServer" -w || Fail "$2: something it has started is still running"
  if [ -n "$output" ]; then tr -d '\r' <<<"$output"; fi
  [ $code = "$expected" ] || Fail "$2 ended with $code, not $expected"
}

Run 0 "$(basename "$KRNQB_INSTALLER") /S"
Run 0 'krnqb --version'
Run 0 'krnqb company new nursery.qbw --name "Hollow Creek Nursery" --fiscal-month January --processor 1.1'
Run 0 'krnqb company load nursery.qbw accounts.xml items.xml preferences.xml company.xml bills.xml checks.xml credit-card-charges.xml invoices.xml sales-receipts.xml'
Run 0 'krnqb import --company nursery.qbw --plan nursery.kpf --expenses --income --balances all'
Run 4 'krnqb reconcile --company nursery.qbw --plan nursery.kpf'
Run 0 'krnqb plan undo nursery.kpf'
Run 0 '"C:\Program Files\krnqb\uninstall.exe" /S'
[ ! -e "$root$work/prefix/drive_c/Program Files/krnqb" ] || Fail "the uninstaller has left its folder"
Run 1 'krnqb --version'
