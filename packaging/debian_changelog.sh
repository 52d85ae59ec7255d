#!/usr/bin/env bash
# usage: debian_changelog.sh CHANGELOG VERSION MAINTAINER DATE
#
# Prints what CHANGELOG.md says about a version in the form of a Debian changelog. Fails if it says nothing.
set -euo pipefail
changelog=$1
version=$2

changes=$(awk -v heading="## [$version]" '
  index($0, heading) == 1 { inside = 1; next }
  /^## / { inside = 0 }
  inside && /^- / { print "  * " substr($0, 3); next }
  inside && /^  [^ ]/ { print "    " substr($0, 3) }' "$changelog")
if [ -z "$changes" ]; then
  echo "CHANGELOG.md: nothing is said about version $version; add the section \"## [$version]\"" >&2
  exit 1
fi
printf 'krnqb (%s) unstable; urgency=medium\n\n%s\n\n -- %s  %s\n' "$version" "$changes" "$3" "$4"
