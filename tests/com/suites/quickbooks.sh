# shellcheck shell=bash
# The command line with a living QuickBooks: krnqb.exe asks the test processor, which answers from a recording, under the
# class that the component uses and under the later one, which is called by name. Linux imports from the same recording.
source ./suites/registered.sh
Built krnqb.exe KRN6_TestProcessor.dll
stage=$root$work/stage
linux=$root$work/linux
outputs=$root$work/outputs
mkdir -p "$linux" "$outputs"
export KRNQB_CALL_LOG=calls.txt
earlyClass='{2D0E74B6-021A-11D5-9054-00508BF70A94}'
laterClass='{6C3B7E0D-94A1-4E5B-8F27-51D0C94A7E36}'
laterName=QBXMLRP2.RequestProcessor

# What QuickBooks answers to any import: recordings of the nursery. Those of version 6.0 differ in nothing else.
for version in 1.1 2.0; do
  "$KRNQB_PROGRAM" company new "$linux/$version.qbw" --name "Hollow Creek Nursery" --fiscal-month January \
    --processor "$version" >/dev/null
  "$KRNQB_PROGRAM" company load "$linux/$version.qbw" "$tree"/samples/nursery/*.xml >/dev/null
  "$KRNQB_PROGRAM" record --company "$linux/$version.qbw" --plan-start 2003-01 --out "$linux/$version.jsonl" --quiet
  sed -i '1s|"company":"[^"]*"|"company":"C:\\\\Books\\\\nursery.qbw"|' "$linux/$version.jsonl"
  sed '1s|"major":[0-9]*,"minor":[0-9]*|"major":6,"minor":0|' "$linux/$version.jsonl" >"$linux/6.0-$version.jsonl"
  cp "$linux/$version.jsonl" "$linux/6.0-$version.jsonl" "$stage/"
done

# Krnqb CODE ARGUMENT...: runs krnqb.exe, which must end with CODE. Its call log begins anew.
Krnqb() {
  local code=$1 ended=0
  shift
  rm -f "$stage/calls.txt"
  Windows 120 krnqb.exe "$@" >"$outputs/out" 2>"$outputs/err" || ended=$?
  [ "$ended" = "$code" ] || Fail "krnqb $*: exit code $ended, not $code: $(cat "$outputs/out" "$outputs/err")"
}
# grep reads to the end: what writes to it must not be ended by the system.
Says() { tr -d '\r' <"$outputs/$1" | grep -F -- "$2" >/dev/null || Fail "standard $1 lacks \"$2\": $(cat "$outputs/$1")"; }
Logged() { grep -qxF -- "$1" "$stage/calls.txt" || Fail "the call log lacks \"$1\": $(cat "$stage/calls.txt")"; }
NotLogged() { if grep -qxF -- "$1" "$stage/calls.txt"; then Fail "the call log has \"$1\""; fi; }
WithoutStamp() { sed -E 's#<lastsavedid>[^<]*#<lastsavedid>#' "$1"; }

# SameImports RECORDING: imports of every product from QuickBooks equal those of the recording on Linux.
SameImports() {
  local recording=$1 product options
  for product in ald bri cor; do
    options=(--expenses --income --balances all --growth-income 10)
    if [ "$product" = bri ]; then options+=(--select-all-expenses); else options+=(--past-performance); fi
    cp "$tree/samples/plans/nursery-$product.kpf" "$stage/$product.kpf"
    cp "$tree/samples/plans/nursery-$product.kpf" "$linux/$product.kpf"
    (cd "$linux" && "$KRNQB_PROGRAM" import --replay "$recording.jsonl" --plan "$product.kpf" "${options[@]}" >"$outputs/linux" \
      2>/dev/null)
    KRNQB_RECORDING=$recording.jsonl Krnqb 0 import --quickbooks --plan "$product.kpf" "${options[@]}"
    cmp <(WithoutStamp "$linux/$product.kpf") <(WithoutStamp "$stage/$product.kpf") || Fail "$recording, $product: the plans differ"
    # All that is printed except the first line, which names the source, and the saved files.
    diff <(sed -e 1d -e '/[0-9] ms$/d' "$outputs/linux" | grep -v 'kpf') \
      <(tr -d '\r' <"$outputs/out" | sed -e 1d -e '/[0-9] ms$/d' | grep -v 'kpf') || Fail "$recording, $product: the reports differ"
    rm -rf "$stage/$product.kpf".* "$linux/$product.kpf".*
  done
}

# No class is registered.
cp "$tree/samples/plans/nursery-ald.kpf" "$stage/plan.kpf"
Krnqb 1 import --quickbooks --plan plan.kpf --expenses
Says err 'krnqb: opening QuickBooks failed: no request processor can be created: '
Says err "QuickBooks 2002/2003 $earlyClass: Class not registered (80040154), $laterName: Class not registered (80040154); "
Says err 'install QuickBooks on this machine, or import a recording with --replay'
[ ! -e "$stage/plan.kpf.lock" ] || Fail "an import without QuickBooks has locked the plan"

# The class that the component uses.
Windows 60 regsvr32 /s KRN6_TestProcessor.dll || Fail "regsvr32"
SameImports 1.1
SameImports 2.0
Logged 'connection KRN6_QB2002.dll, Korrin Software Data Exchange Component'
Logged 'session "", mode 2'
Logged released
NotLogged 'session ended'
KRNQB_RECORDING=1.1.jsonl Krnqb 0 import --quickbooks 'C:\Books\nursery.qbw' --plan plan.kpf --expenses --dry-run
Logged 'session "C:\Books\nursery.qbw", mode 2'
Says out 'from C:\Books\nursery.qbw in QuickBooks, '
KRNQB_RECORDING=1.1.jsonl Krnqb 0 accounts income --quickbooks
diff <("$KRNQB_PROGRAM" accounts income --company "$linux/1.1.qbw") <(tr -d '\r' <"$outputs/out") || Fail "the accounts differ"
KRNQB_RECORDING=2.0.jsonl Krnqb 0 supports 2.0 --quickbooks
KRNQB_RECORDING=1.1.jsonl Krnqb 1 supports 2.0 --quickbooks
KRNQB_RECORDING=1.1.jsonl Krnqb 0 import --quickbooks --plan plan.kpf --expenses --income --balances all
KRNQB_RECORDING=1.1.jsonl Krnqb 4 reconcile --quickbooks --plan plan.kpf
Says out 'the company that is open in QuickBooks'

# A recording, which on Linux is answered by the company file: the same bytes. It is taken by imports on Windows too.
for version in 1.1 2.0; do
  KRNQB_RECORDING=$version.jsonl Krnqb 0 record --quickbooks --plan-start 2003-01 --out "recorded ü.jsonl"
  cmp "$linux/$version.jsonl" "$stage/recorded ü.jsonl" || Fail "the recordings of $version differ"
  [ ! -e "$stage/recorded ü.jsonl.part" ] || Fail "the unfinished recording is left"
  [ "$(grep -c '^session "' "$stage/calls.txt")" = 1 ] || Fail "a recording has opened several sessions"
  KRNQB_RECORDING=$version.jsonl Krnqb 1 record --quickbooks --plan-start 2003-01 --out "recorded ü.jsonl"
  Says err 'exists; remove it, or give another --out'
  Krnqb 0 import --replay "recorded ü.jsonl" --plan plan.kpf --income --balances all --dry-run
  rm "$stage/recorded ü.jsonl"
done

# A recording that is killed goes on. The processor writes each call down before it answers.
: >"$stage/calls.txt"
KRNQB_RECORDING=2.0.jsonl Windows 120 krnqb.exe record --quickbooks --plan-start 2003-01 --out killed.jsonl >/dev/null 2>&1 &
recorder=$!
declare -i waited=0
until [ "$(grep -c '^request$' "$stage/calls.txt")" -gt 20 ] || ! kill -0 $recorder 2>/dev/null; do
  sleep 0.02
  waited+=1
  [ $waited -lt 3000 ] || Fail "the recording has not begun"
done
StopServer "$work/prefix"
wait $recorder || true
if [ -e "$stage/killed.jsonl.part" ]; then
  KRNQB_RECORDING=2.0.jsonl Krnqb 0 record --quickbooks --plan-start 2003-01 --out killed.jsonl
  Says out 'Going on with killed.jsonl.part, which has '
  [ "$(grep -c '^request$' "$stage/calls.txt")" -lt "$(($(wc -l <"$linux/2.0.jsonl") - 1))" ] || Fail "everything was asked again"
fi
cmp "$linux/2.0.jsonl" "$stage/killed.jsonl" || Fail "a recording that went on differs"

# The later class, called by name. It is registered by hand.
Windows 60 regsvr32 /s /u KRN6_TestProcessor.dll || Fail "regsvr32 /u"
library="Z:${work//\//\\}\\stage\\KRN6_TestProcessor.dll"
Key() { Windows 60 reg add "$@" /f >/dev/null || Fail "reg add $*"; }
Key "HKLM\\Software\\Classes\\$laterName\\CLSID" /ve /d "$laterClass"
# RegisterLater [VIEW]
RegisterLater() {
  Key "HKLM\\Software\\Classes\\CLSID\\$laterClass\\InprocServer32" /ve /d "$library" "$@"
  Key "HKLM\\Software\\Classes\\CLSID\\$laterClass\\InprocServer32" /v ThreadingModel /d Apartment "$@"
}
RegisterLater
SameImports 6.0-2.0
Logged 'connection KRN6_QB2002.dll, Korrin Software Data Exchange Component'
[ "$(tail -n 3 "$stage/calls.txt")" = "$(printf '%s\n' 'session ended' 'connection closed' released)" ] ||
  Fail "the later class was not closed: $(tail -n 5 "$stage/calls.txt")"
SameImports 6.0-1.1
KRNQB_RECORDING=6.0-2.0.jsonl Krnqb 0 import --quickbooks --plan plan.kpf --income --balances all --json --dry-run
Says out '"amounts_from": "reports"'
Says out '"processor": "6.0"'
KRNQB_RECORDING=6.0-1.1.jsonl Krnqb 0 import --quickbooks --plan plan.kpf --income --balances all --json --dry-run
Says out '"amounts_from": "transactions"'
KRNQB_RECORDING=6.0-2.0.jsonl Krnqb 0 import --quickbooks --plan plan.kpf --income --balances all --json --dry-run \
  --amounts-from transactions
Says out '"amounts_from": "transactions"'
export KRNQB_REFUSAL_TEXT='QuickBooks is busy'
for call in request:3 request; do
  KRNQB_RECORDING=6.0-2.0.jsonl KRNQB_REFUSED_CALL=$call Krnqb 1 import --quickbooks --plan plan.kpf --expenses
  Says err 'QuickBooks is busy'
  Logged 'session ended'
  Logged 'connection closed'
  Logged released
done
KRNQB_RECORDING=6.0-2.0.jsonl KRNQB_REFUSED_CALL=session Krnqb 1 import --quickbooks --plan plan.kpf --expenses
NotLogged 'session ended'
Logged 'connection closed'
KRNQB_RECORDING=6.0-2.0.jsonl KRNQB_REFUSED_CALL=request:30 Krnqb 0 record --quickbooks --plan-start 2003-01 --out refused.jsonl
Says out '1 of them refusals'
unset KRNQB_REFUSAL_TEXT

# Registered for programs of the other width only. A 32-bit Windows has no other width.
if [ "$architecture" = x86_64 ]; then
  Windows 60 reg delete "HKLM\\Software\\Classes\\CLSID\\$laterClass" /f >/dev/null || Fail "reg delete"
  RegisterLater /reg:32
  Krnqb 1 import --quickbooks --plan plan.kpf --expenses
  Says err "use the 32-bit krnqb.exe, because $laterName is registered for 32-bit programs only"
  Key "HKLM\\Software\\Classes\\CLSID\\$earlyClass\\InprocServer32" /ve /d "$library" /reg:32
  Krnqb 1 accounts income --quickbooks
  Says err "use the 32-bit krnqb.exe, because QuickBooks 2002/2003 $earlyClass and $laterName are registered"
fi
