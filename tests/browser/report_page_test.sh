#!/usr/bin/env bash
# usage: report_page_test.sh TREE PROGRAM VIEWERS FOLDER
#
# Makes the pages of imports and reconciliations with the program PROGRAM in FOLDER and looks at them in Chromium, which
# VIEWERS drives. Skipped (exit status 77) where the browser or what drives it is missing.
set -euo pipefail

source "$(dirname "$0")/common.sh" "$@"

# Company FILE NAME DOCUMENT...: creates a company from documents.
Company() {
  "$krnqb" company new "$1" --name "$2" --fiscal-month January --processor 1.1 >/dev/null
  "$krnqb" company load "$1" "${@:3}" >/dev/null
}

# Import COMPANY NAME: imports everything and keeps page, result, and the plan before and after as NAME.
Import() {
  cp "$tree/samples/plans/nursery-ald.kpf" "$2.kpf"
  "$krnqb" import --company "$1" --plan "$2.kpf" --expenses --income --past-performance --balances all \
    --growth-income 5 --growth-cogs 3 --report "$2.html" --json >"$2.json" 2>"$2.err"
  "$krnqb" plan show "$2.kpf" --json >"$2-after.json"
  "$krnqb" plan show "$2.kpf.bak" --json >"$2-before.json"
}

Company nursery.qbw "Hollow Creek Nursery" "$tree"/samples/nursery/*.xml
Import nursery.qbw import

mkdir documents
cp "$tree"/samples/nursery/*.xml documents/
sed -i 's/Automobile/\&lt;script\&gt;alert(1)\&lt;\/script\&gt;/; s/Utilities/\&quot;\&gt;\&lt;img src=x onerror=alert(1)\&gt;/' \
  documents/*.xml
Company hostile.qbw '</title><script>alert("1")</script>' documents/*.xml
Import hostile.qbw hostile

# Reconcile NAME EXPECTED OPTION...: keeps page and result as NAME.
Reconcile() {
  local code=0
  "$krnqb" reconcile --company nursery.qbw --plan import.kpf --report "$1.html" --json "${@:3}" >"$1.json" || code=$?
  if [ "$code" != "$2" ]; then
    echo "krnqb reconcile ended with $code instead of $2"
    exit 1
  fi
}
Reconcile differs 4
Reconcile agrees 0 --tolerance 1000000

sed 's/>-12/>/; 5,$d' "$tree/samples/plans/nursery-ald.kpf" >broken.kpf
if "$krnqb" import --company nursery.qbw --plan broken.kpf --expenses --report failed.html 2>failed.err; then
  echo "the import into a broken plan did not fail"
  exit 1
fi

node "$tree/tests/browser/report_page_test.mjs" "$folder"
