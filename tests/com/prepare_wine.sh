#!/usr/bin/env bash
# usage: prepare_wine.sh ARCHITECTURE
#
# Prepares once what every suite of an architecture starts from: for i686 the private 32-bit root, then the Wine prefix.
set -euo pipefail
cd "$(dirname "$0")"
programArguments=("$@")
architecture=$1
suite=preparation
source ./wine.sh

# 32-bit packages cannot be installed beside the machine's own. They are unpacked into a folder by an apt with its own
# lists and state.
MakeRoot() {
  local aptFolder=$root.apt
  rm -rf "$root" "$aptFolder"
  mkdir -p "$root/proc" "$root/dev" "$root/tmp" "$aptFolder/lists/partial" "$aptFolder/cache/archives/partial"
  : >"$aptFolder/status"
  local -a apt=(apt-get -qq -o APT::Architecture=i386 -o APT::Architectures=i386 -o "Dir::State::Lists=$aptFolder/lists"
    -o "Dir::Cache=$aptFolder/cache" -o "Dir::State::status=$aptFolder/status" -o APT::Sandbox::User=root)
  # One suite's list may be inconsistent; the packages are in the others.
  "${apt[@]}" update >"$aptFolder/log" 2>&1 || true
  if ! "${apt[@]}" install --no-install-recommends --yes --download-only wine32 wine bash coreutils \
    >>"$aptFolder/log" 2>&1; then
    tail -n 5 "$aptFolder/log"
    Fail "the packages of the 32-bit root cannot be downloaded"
  fi
  local package
  for package in "$aptFolder"/cache/archives/*.deb; do dpkg -x "$package" "$root"; done
  rm -rf "$aptFolder/cache/archives"
  MarkAsBuiltin "$root/usr/i686-w64-mingw32/lib/zlib1.dll" "$root/usr/lib/i386-linux-gnu/wine/i386-windows/zlib1.dll"
  # File names with non-ASCII letters: both architectures need the same locale.
  mkdir -p "$root/usr/lib/locale"
  cp -r /usr/lib/locale/C.utf8 "$root/usr/lib/locale/"
  touch "$root/ready"
}

# Done by the package's own install script: Wine recognises its own libraries by a mark after the header.
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
  # The server writes the registry when it exits.
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
