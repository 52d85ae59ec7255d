# shellcheck shell=bash
# Sourced by the suites of the script languages: complete imports by script hosts, for every product, processor version
# and choice of balances. The plan's cells must match the command line's byte for byte, and the events those of a host
# on Linux.
source ./suites/registered.sh

declare -A productNumbers=([ald]=1 [bri]=2 [cor]=3) balanceNumbers=([none]=0 [planned]=1 [actual]=2 [all]=3)
recordings=$area/recordings
compared=0

# ImportAs SCRIPT NAME PRODUCT BALANCES MEMBERS
ImportAs() {
  local script=$1 name=$2 product=$3 balances=$4 members=$5 output
  local stage=$root$work/stage
  cp "$recordings/$name.jsonl" "$recordings/$product.kpf" "$stage/"
  rm -f "$stage/cells.txt" "$stage/events.txt"
  output=$(KRNQB_RECORDING="$name.jsonl" Script 120 "end of $script" "$script" "$product.kpf" \
    "${productNumbers[$product]}" "${balanceNumbers[$balances]}" "$members" cells.txt events.txt) ||
    Fail "$script, $name, $members: $output"
  grep -qx 'imported True, error 0 ' <<<"$output" || Fail "$script, $name, $members: $output"
  Ascii <"$stage/cells.txt" | cmp - "$recordings/$name.cells" || Fail "$script, $name, $members: the cells differ"
  cmp "$stage/events.txt" "$recordings/$name.events" || Fail "$script, $name, $members: the events differ"
  rm "$stage/$name.jsonl"
  compared=$((compared + 1))
}

# ImportAll SCRIPT MEMBERS...: runs every import, alternating the kinds of members.
ImportAll() {
  local script=$1 version product balances
  shift
  local kinds=("$@")
  Register KRN6_QB2002.dll KRN6_TestProcessor.dll KRN6_TestBridge.dll
  Stage "scripts/$script"
  for version in 1.1 2.0; do
    for product in ald bri cor; do
      for balances in none planned actual all; do
        ImportAs "$script" "$version-$product-$balances" "$product" "$balances" "${kinds[compared % ${#kinds[@]}]}"
      done
    done
  done
  echo "$compared imports by $script gave the same cells as the command line"
}
