#!/usr/bin/env bash
# usage: license_notices.sh SOURCES FOLDER
#
# Writes into FOLDER the license notices of what krnqb.exe, KRN6_QB2002.dll and the installers contain, as Debian has
# them: SOURCES has the source packages of the libraries, those of the headers and of the compilers are installed here.
# Licenses that these name are copied too.
set -euo pipefail
sources=$1
folder=$2
common=/usr/share/common-licenses

# Notice NAME WHAT VERSION FILE
Notice() {
  printf '%s %s\n%s\n\n' "$1" "$3" "$2" | cat - "$4" >"$folder/$1.txt"
}

# FromSource PACKAGE WHAT: a library that is built from a source package.
FromSource() {
  local package
  package=$(echo "$sources/$1"-*/)
  [ -f "$package/debian/copyright" ] || { echo "license_notices.sh: $sources has no source package $1" >&2; exit 1; }
  Notice "$1" "$2" "$(dpkg-parsechangelog --file "$package/debian/changelog" --show-field Version)" \
    "$package/debian/copyright"
}

# FromPackage NAME PACKAGE WHAT: a package that is installed.
FromPackage() {
  local version
  if ! version=$(dpkg-query --show --showformat='${Version}' "$2" 2>/dev/null); then
    echo "license_notices.sh: the package $2 is not installed" >&2
    exit 1
  fi
  Notice "$1" "$3" "$version" "$(readlink -f "/usr/share/doc/$2/copyright")"
}

mkdir -p "$folder"
FromSource libxml2 "Linked into krnqb.exe and KRN6_QB2002.dll."
FromSource utf8proc "Linked into krnqb.exe and KRN6_QB2002.dll."
FromSource sqlite3 "Linked into krnqb.exe."
FromSource nettle "Its SHA-256 is linked into krnqb.exe."
FromSource libxlsxwriter "Linked into krnqb.exe."
FromSource zlib "Its compression and its archiver are linked into krnqb.exe."
FromPackage fmt libfmt-dev "Compiled into krnqb.exe and KRN6_QB2002.dll."
FromPackage nlohmann-json nlohmann-json3-dev "Compiled into krnqb.exe and KRN6_QB2002.dll."
FromPackage rapidjson rapidjson-dev "Compiled into krnqb.exe and KRN6_QB2002.dll."
FromPackage cli11 libcli11-dev "Compiled into krnqb.exe."
FromPackage xxhash libxxhash-dev "Compiled into krnqb.exe."
FromPackage gcc gcc-mingw-w64-base "Its run-time library and C++ library are linked into krnqb.exe and KRN6_QB2002.dll."
FromPackage mingw-w64 mingw-w64-common "Its run-time library and winpthreads are linked into krnqb.exe and KRN6_QB2002.dll."
FromPackage nsis nsis-common "Makes the installer and is part of it."

# Each text is once in the folder, however many notices name it.
grep -ohE "$common/[A-Za-z]+(-[0-9]+(\.[0-9]+)*)?" "$folder"/*.txt | LC_ALL=C sort -u | while read -r license; do
  [ ! -f "$license" ] || cp "$(readlink -f "$license")" "$folder/$(basename "$license").txt"
done
sed -i "s#$common/\([A-Za-z]*\(-[0-9]\(\.[0-9]\)*\)\?\)#\1.txt#g" "$folder"/*.txt
