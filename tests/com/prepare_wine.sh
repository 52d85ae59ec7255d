#!/usr/bin/env bash
# usage: prepare_wine.sh ARCHITECTURE
#
# Makes what every suite of an architecture starts from, once: for i686 the private 32-bit root, then the Wine prefix.
set -euo pipefail
cd "$(dirname "$0")"
programArguments=("$@")
architecture=$1
suite=preparation
source ./wine.sh

# Packages of the 32-bit architecture cannot stand beside the machine's own, and need not: they are unpacked into a
# folder, by an apt that has its lists and its state there.
MakeRoot() {
  local aptFolder=$root.apt
  rm -rf "$root" "$aptFolder"
  mkdir -p "$root/proc" "$root/dev" "$root/tmp" "$aptFolder/lists/partial" "$aptFolder/cache/archives/partial"
  : >"$aptFolder/status"
  local -a apt=(apt-get -qq -o APT::Architecture=i386 -o APT::Architectures=i386 -o "Dir::State::Lists=$aptFolder/lists"
    -o "Dir::Cache=$aptFolder/cache" -o "Dir::State::status=$aptFolder/status" -o APT::Sandbox::User=root)
  # The list of one suite may not fit; the packages stand in the others.
  "${apt[@]}" update >"$aptFolder/log" 2>&1 || true
  if ! "${apt[@]}" install --no-install-recommends --yes --download-only wine32 wine bash coreutils \
    >>"$aptFolder/log" 2>&1; then
    tail -n 5 "$aptFolder/log"
    Fail "the packages of the 32-bit root cannot be had"
  fi
  local package
  for package in "$aptFolder"/cache/archives/*.deb; do dpkg -x "$package" "$root"; done
  rm -rf "$aptFolder/cache/archives"
  MarkAsBuiltin "$root/usr/i686-w64-mingw32/lib/zlib1.dll" "$root/usr/lib/i386-linux-gnu/wine/i386-windows/zlib1.dll"
  # Names of files in letters outside ASCII: both architectures read the same locale.
  mkdir -p "$root/usr/lib/locale"
  cp -r /usr/lib/locale/C.utf8 "$root/usr/lib/locale/"
  touch "$root/ready"
}

# What the package's own script does at installation: Wine takes a library for its own by a mark after the header.
MarkAsBuiltin() {
  {
    head -c 64 "$1"
    printf 'Wine builtin DLL'
    head -c 16 /dev/zero
    tail -c +97 "$1"
  } >"$2"
}

MakePrefix() {
  rm -rf "${root}${basePrefix:?}"
  mkdir -p "$root$home"
  serverPrefix=$basePrefix
  InSystem "$basePrefix" / timeout 120 "$wineProgram" wineboot --init >/dev/null 2>&1 || Fail "wineboot failed"
  # No window manager runs in the tests.
  InSystem "$basePrefix" / timeout 60 "$wineProgram" reg add 'HKCU\Software\Wine\X11 Driver' /v Managed /d N /f >/dev/null
  # The server writes the registry when it ends.
  InSystem "$basePrefix" / timeout 60 "$wineServer" -w
  touch "$root$basePrefix/ready"
}

EnterRoot
mkdir -p "$area"
exec 9>"$area/$architecture.lock"
flock 9
if [ -n "$root" ] && [ ! -f "$root/ready" ]; then MakeRoot; fi
MountSystem
if [ ! -f "$root$basePrefix/ready" ]; then MakePrefix; fi
echo "ready"
