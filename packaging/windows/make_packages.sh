#!/usr/bin/env bash
# usage: make_packages.sh ARCHITECTURE BUILD FOLDER
#
# Makes, of the Windows build in BUILD, an installer and a zip of the same files in FOLDER:
# krnqb-VERSION-windows-WIDTH-setup.exe and krnqb-VERSION-windows-WIDTH.zip, where WIDTH is x64 or x86. All times are
# SOURCE_DATE_EPOCH, so that the same build makes the same bytes.
set -euo pipefail
architecture=$1
build=$2
mkdir -p "$3"
output=$(cd "$3" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
: "${SOURCE_DATE_EPOCH:?is the time of all files, in seconds since 1970}"
export TZ=UTC LC_ALL=C.UTF-8
umask 022

case $architecture in
  x86_64) width=x64 bits=64 ;;
  i686) width=x86 bits=32 ;;
  *) echo "make_packages.sh: no such architecture: $architecture" >&2; exit 2 ;;
esac
version=$("$here/version.sh")
name=krnqb-$version-windows-$width
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$here/collect_files.sh" "$architecture" "$build" "$work/$name"

rm -f "$output/$name.zip" "$output/$name-setup.exe"
(cd "$work" && find "$name" -type f | LC_ALL=C sort | zip --quiet -X -9 "$output/$name.zip" -@)

# What the installer carries has the same times as what it installs.
install -m 755 "$build/bin/krnqb_setup.exe" "$work/krnqb_setup.exe"
touch --date="@$SOURCE_DATE_EPOCH" "$work/krnqb_setup.exe"
"$here/installed_files.sh" "$work/$name" >"$work/files.nsh"
size=$(find "$work/$name" -type f -printf '%s\n' | awk '{ sum += int(($1 + 1023) / 1024) } END { print sum }')
if ! makensis -V2 -INPUTCHARSET UTF8 -DVERSION="$version" -DWIDTH=$width -DBITS=$bits -DSIZE="$size" -DFILES="$work/files.nsh" \
  -DHELPER="$work/krnqb_setup.exe" -DOUTPUT="$output/$name-setup.exe" "$here/krnqb.nsi" >"$work/log" 2>&1; then
  cat "$work/log" >&2
  exit 1
fi
grep -i warning "$work/log" >&2 && exit 1
chmod 644 "$output/$name-setup.exe"
