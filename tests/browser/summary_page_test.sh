#!/usr/bin/env bash
# usage: summary_page_test.sh TREE PROGRAM VIEWERS FOLDER
#
# Makes the page of krnqb summary --html with the program PROGRAM in FOLDER, from imports that are done, incomplete,
# failed and cut off, and looks at it in Chromium, which VIEWERS drives. Skipped (exit status 77) where the browser or
# what drives it is missing.
set -euo pipefail

source "$(dirname "$0")/common.sh" "$@"
mkdir results

# Import NAME COMPANY PLAN: keeps the result as NAME, whatever it is.
Import() {
  "$krnqb" import --company "$2" --plan "$3" --expenses --income --balances all --json >"results/$1.json" 2>/dev/null ||
    true
}

"$krnqb" company new nursery.qbw --name '<script>alert("1")</script>' --fiscal-month January --processor 1.1 >/dev/null
"$krnqb" company load nursery.qbw "$tree"/samples/nursery/{accounts,items,bills,checks}*.xml >/dev/null
for name in 'first' 'two words' '=cmd|x'; do
  cp "$tree/samples/plans/nursery-ald.kpf" "$name.kpf"
  Import "$name" nursery.qbw "$name.kpf"
done
Import 'missing company' none.qbw first.kpf
Import 'missing plan' nursery.qbw "$(printf 'a%.0s' {1..150}).kpf"
head -c 200 results/first.json >'results/cut off.json'
: >results/empty.json

"$krnqb" summary results --html summary.html --json >summary.json || [ $? = 3 ]
node "$tree/tests/browser/summary_page_test.mjs" "$folder"
