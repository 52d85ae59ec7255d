#!/usr/bin/env bash
# usage: links_test.sh TREE
#
# Fails, naming document and link, unless every relative link in the documents of TREE leads to a file or folder, and to a
# heading if it names one. A heading's anchor is its text in lower case, without punctuation, blanks as hyphens.
set -euo pipefail
cd "$1"

# Links DOCUMENT: prints the relative links in a document, without those in blocks of code.
Links() {
  awk '/^```/ { inside = !inside; next } !inside' "$1" | grep -oE '\]\([^)]+\)' | sed -E 's/^\]\(//; s/\)$//' |
    grep -vE '^[a-z]+:' || true
}

Anchors() {
  awk '/^```/ { inside = !inside; next } !inside && /^#+ /' "$1" | sed -E 's/^#+ //' |
    tr '[:upper:]' '[:lower:]' | sed -E 's/[^a-z0-9_ -]//g; s/ /-/g'
}

links=0
broken=0
while read -r document; do
  while read -r link; do
    links=$((links + 1))
    target=$(dirname "$document")/${link%%#*}
    if [ -z "${link%%#*}" ]; then target=$document; fi
    anchor=
    if [[ $link == *#* ]]; then anchor=${link#*#}; fi
    if [ ! -e "$target" ] || { [ -n "$anchor" ] && ! Anchors "$target" | grep -xF "$anchor" >/dev/null; }; then
      echo "$document: $link leads nowhere" >&2
      broken=$((broken + 1))
    fi
  done < <(Links "$document")
done < <(find . -name '*.md' -not -path './build/*' | sort)
[ "$links" -gt 50 ] || { echo "only $links links were found" >&2; exit 1; }
[ "$broken" -eq 0 ]
echo "$links links"
