#!/usr/bin/env bash
# usage: record_imports.sh KRNQB IMPORT-EVENTS FOLDER
#
# Records into FOLDER, with the program KRNQB, every import of the nursery that the Windows tests repeat:
#
#   VERSION-PRODUCT-BALANCES.jsonl   the exchange with the company
#   VERSION-PRODUCT-BALANCES.cells   the cells of the plan after the import
#   VERSION-PRODUCT-BALANCES.events  the events raised meanwhile, from the program IMPORT-EVENTS
#   PRODUCT.kpf                      the plan before the import
set -euo pipefail
krnqb=$1
events=$2
folder=$3
samples=$(cd "$(dirname "$0")/../../samples" && pwd)

rm -rf "$folder"
mkdir -p "$folder"
cd "$folder"
for version in 1.1 2.0; do
  "$krnqb" company new "$version.qbw" --name "Hollow Creek Nursery" --fiscal-month January --processor "$version"
  "$krnqb" company load "$version.qbw" "$samples"/nursery/*.xml >/dev/null
  for product in ald bri cor; do
    cp "$samples/plans/nursery-$product.kpf" "$product.kpf"
    for balances in none planned actual all; do
      name=$version-$product-$balances
      options=(--expenses --income --past-performance --balances "$balances")
      if [ "$balances" != none ]; then options+=(--growth-income 10 --growth-cogs 5 --growth-expenses 3); fi
      if [ "$product" = bri ]; then options+=(--select-all-expenses); fi
      cp "$product.kpf" "$name.kpf"
      "$krnqb" import --company "$version.qbw" --plan "$name.kpf" --record "$name.jsonl" --quiet "${options[@]}" 2>/dev/null
      "$krnqb" plan show "$name.kpf" --cells >"$name.cells"
      cmp -s "$name.kpf" "$product.kpf" && { echo "$name changed nothing"; exit 1; }
      rm -r "$name.kpf" "$name".kpf.*
    done
  done
done
rm ./*.qbw*
# The path by which Windows programs know the company.
sed -i '1s|"company":"[^"]*"|"company":"C:\\\\Books\\\\nursery.qbw"|' ./*.jsonl
for recording in *.jsonl; do
  name=${recording%.jsonl}
  product=${name#*-}
  "$events" "$recording" "${product%-*}.kpf" "${name##*-}" >"$name.events"
done
echo "recorded $(find . -name '*.jsonl' | wc -l) imports"
