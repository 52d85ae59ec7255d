#!/usr/bin/env bash
# usage: reference_test.sh TREE
#
# Fails unless docs/reference is what script/docs writes, and unless its makers refuse what is undocumented, by name.
# Exits with 77 if doxygen is missing.
set -euo pipefail
cd "$1"
script/docs --check

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
export PYTHONDONTWRITEBYTECODE=1

# Refuses WHAT COMMAND...: fails unless the command fails and prints WHAT.
Refuses() {
  local what=$1 output
  shift
  if output=$("$@" 2>&1); then echo "accepted although $what"; exit 1; fi
  grep -qF -- "$what" <<<"$output" || { echo "instead of \"$what\": $output"; exit 1; }
}

mkdir -p "$work/include/krnqb" "$work/pages"
cat >"$work/include/krnqb/shown.h" <<'END'
#pragma once
namespace krnqb {
/// A class.
class Shown {
 public:
  /// A value, and its setter.
  int Value() const;
  void Value(int value);
  int Forgotten() const;

 private:
  int hidden_ = 0;
};
/// A choice.
enum class Choice {
  First,  ///< the first
  Bare
};
}  // namespace krnqb
END
(cd "$work" && { cat "$1/script/reference/Doxyfile"; echo "OUTPUT_DIRECTORY = $work"; } | doxygen - >/dev/null)
Refuses "include/krnqb/shown.h:9: Forgotten is undocumented" python3 script/reference/headers.py "$work/xml" "$work/pages"
Refuses "Choice::Bare is undocumented" python3 script/reference/headers.py "$work/xml" "$work/pages"
if python3 script/reference/headers.py "$work/xml" "$work/pages" 2>&1 | grep -E 'Value|hidden_'; then
  echo "complained about what is documented or private"
  exit 1
fi

sed 's/helpstring("Runs the import")/helpstring("")/; s/ *\/\/ both$//' idl/krn6_qb2002.idl >"$work/changed.idl"
Refuses "Go is undocumented" python3 script/reference/interface.py "$work/changed.idl" "$work/pages"
Refuses "BalImport_All is undocumented" python3 script/reference/interface.py "$work/changed.idl" "$work/pages"
echo "undocumented members are refused"
