#!/usr/bin/env bash
# usage: collect_files.sh ARCHITECTURE BUILD FOLDER
#
# Copies into FOLDER what is installed on Windows of the build in BUILD: ARCHITECTURE is x86_64 or i686. Texts for
# people get Windows' line ends. All times are SOURCE_DATE_EPOCH.
set -euo pipefail
architecture=$1
build=$2
folder=$3
here=$(cd "$(dirname "$0")" && pwd)
tree=$(cd "$here/../.." && pwd)
umask 022

version=$("$here/version.sh")
if [ "$architecture" = x86_64 ]; then processor=amd64; else processor=x86; fi
libraries=$(sed -n 's/^KRNQB_WINDOWS_LIBRARIES:[A-Z]*=//p' "$build/CMakeCache.txt")

mkdir -p "$folder"/{docs/images,examples,include}
install -m 755 "$build/bin/krnqb.exe" "$build/bin/KRN6_QB2002.dll" "$folder/"
"$here/assembly_manifest.sh" "$tree/idl/krn6_qb2002.idl" "$version" $processor >"$folder/Korrin.KRN6_QB2002.manifest"
sed -e "s/@VERSION@/$version/" -e "s/@PROCESSOR@/$processor/" "$here/host.exe.manifest.in" \
  >"$folder/examples/host.exe.manifest"
install -m 644 "$build"/idl/krn6_qb2002.{h,tlb} "$folder/include/"
# The examples except those for Linux.
for example in "$tree"/examples/*; do
  case $(basename "$example") in
    host | cpp) ;;
    *) cp -R "$example" "$folder/examples/" ;;
  esac
done
cp -R "$tree/samples" "$folder/examples/"
cp "$tree/CHANGELOG.md" "$folder/"
find "$tree/docs" -maxdepth 1 -name '*.md' ! -name promises.md -exec cp {} "$folder/docs/" \;
cp "$tree"/docs/images/win32-*.png "$folder/docs/images/"
if [ -d "$tree/docs/reference" ]; then cp -R "$tree/docs/reference" "$folder/docs/"; fi
"$here/license_notices.sh" "$(dirname "$libraries")/sources" "$folder/licenses"

find "$folder" -type f \( -name '*.md' -o -name '*.txt' -o -name '*.vbs' -o -name '*.js' -o -name '*.manifest' \) \
  -exec sed -i 's/\r*$/\r/' {} +
find "$folder" -type f ! -name '*.exe' ! -name '*.dll' -exec chmod 644 {} +
find "$folder" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} +
