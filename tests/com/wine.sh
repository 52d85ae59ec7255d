# shellcheck shell=bash
# Sourced by the scripts beside it. A suite of Windows tests runs in its own folder with a Wine prefix cloned from one
# that is created once per architecture:
#
#   x86_64  in the machine's own Wine
#   i686    in a private 32-bit root below build/, since 32-bit hosts load the 32-bit library
#
# Set before: architecture, suite. Set here:
#   area    shared by all suites of the machine
#   root    the root of the file system that Windows programs see ("" for the machine's own)
#   work    the suite's own folder; `stage` in it is the current folder of every Windows program
tree=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
area=$tree/build/windows-tests
skipCode=77

# The environment variables that control clients and the request processor; no others are passed.
tellingNames='KRNQB_|DISPLAY='

Fail() {
  echo "FAILED: $*" >&2
  exit 1
}

case $architecture in
  x86_64)
    root=
    home=$area/x86_64
    wineArchitecture=win64
    wineProgram=/usr/lib/wine/wine64
    wineServer=/usr/lib/wine/wineserver64
    ;;
  i686)
    root=$area/root-i686
    home=/tests
    wineArchitecture=win32
    wineProgram=/usr/lib/wine/wine
    wineServer=/usr/lib/wine/wineserver32
    ;;
  *) Fail "no such architecture: $architecture" ;;
esac
basePrefix=$home/prefix
work=$home/$suite

# Wine maps a page at a fixed address as it starts, and ends without a word if the kernel has put something there. Without
# random addresses it never has.
steadyAddresses=()
if setarch "$(uname -m)" --addr-no-randomize true 2>/dev/null; then
  steadyAddresses=(setarch "$(uname -m)" --addr-no-randomize)
fi

# A suite may set `withoutLibraries` to a comma-separated list of system libraries to hide from Windows programs.
#
# InSystem PREFIX FOLDER COMMAND...: runs a program of the system that contains Wine, passing only the tests' own
# environment variables. PREFIX and FOLDER are paths of that system.
InSystem() {
  local prefix=$1 folder=$2
  shift 2
  local -a telling=()
  mapfile -t telling < <(env | grep -E "^($tellingNames)" || true)
  local -a environment=(env -i "HOME=$home" PATH=/usr/bin:/bin LANG=C.UTF-8 "WINEPREFIX=$prefix"
    "WINEARCH=$wineArchitecture" "WINESERVER=$wineServer" "WINEDEBUG=${KRNQB_WINEDEBUG:--all}"
    "WINEDLLOVERRIDES=mscoree,mshtml=;winedbg.exe=d${withoutLibraries:+;$withoutLibraries=}" "${telling[@]}")
  if [ -n "$root" ]; then
    "${steadyAddresses[@]}" chroot "$root" "${environment[@]}" bash -c 'cd "$0" && exec "$@"' "$folder" "$@" </dev/null
  else
    (cd "$folder" && exec "${steadyAddresses[@]}" "${environment[@]}" "$@" </dev/null)
  fi
}

# Windows SECONDS PROGRAM [ARGUMENT...]: runs a Windows program in the suite's stage, for at most SECONDS.
Windows() {
  local seconds=$1
  shift
  InSystem "$work/prefix" "$work/stage" timeout --kill-after=5 "$seconds" "$wineProgram" "$@"
}

# Script SECONDS SENTINEL FILE [ARGUMENT...]: runs a script in Wine's script host, which exits silently with 0 if a
# script fails: only a script that reaches its last line prints SENTINEL.
Script() {
  local seconds=$1 sentinel=$2 output
  shift 2
  if ! output=$(Windows "$seconds" cscript //nologo "$@" 2>&1) ||
    [ "$(tail -n 1 <<<"$output" | tr -d '\r')" != "$sentinel" ]; then
    printf '%s\n' "$output"
    echo "FAILED: $* did not finish (\"$sentinel\")"
    return 1
  fi
  printf '%s\n' "$output" | tr -d '\r'
}

StopServer() {
  InSystem "$1" / "$wineServer" -k 2>/dev/null || true
  InSystem "$1" / "$wineServer" -w 2>/dev/null || true
}

# A 32-bit root needs the kernel's file systems. They are mounted in a namespace of this process, and disappear with it
# however it ends.
EnterRoot() {
  [ -n "$root" ] || return 0
  if [ "${KRNQB_IN_NAMESPACE:-}" != yes ]; then
    local refusal
    if ! refusal=$(unshare --mount --propagation private chroot / true 2>&1); then
      if [ "${KRNQB_REQUIRE_32BIT:-}" = 1 ]; then Fail "the 32-bit root cannot be entered: $refusal"; fi
      echo "SKIPPED: the 32-bit library needs a root of its own, and to enter it is refused here: $refusal"
      exit $skipCode
    fi
    KRNQB_IN_NAMESPACE=yes exec unshare --mount --propagation private "./$(basename "$0")" "${programArguments[@]}"
  fi
}

MountSystem() {
  [ -n "$root" ] || return 0
  mount -t proc proc "$root/proc"
  mount --bind /dev "$root/dev"
  mounted=yes
}

# Clean up on every exit: the suite's server by its own prefix, the display by its number, the mounts.
CleanUp() {
  if [ -n "${serverPrefix:-}" ]; then StopServer "$serverPrefix"; fi
  if [ -n "${displayProcess:-}" ]; then kill "$displayProcess" 2>/dev/null || true; fi
  if [ "${mounted:-}" = yes ]; then umount "$root/dev" "$root/proc" || true; fi
}
trap CleanUp EXIT
trap 'exit 143' TERM INT HUP

# StartDisplay: starts an X server of the suite's own, for programs that open windows.
StartDisplay() {
  local number=$root$work/display
  Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp 3>"$number" 2>/dev/null &
  displayProcess=$!
  local -i waited=0
  until [ -s "$number" ]; do
    sleep 0.1
    waited+=1
    [ $waited -lt 100 ] || Fail "Xvfb did not start"
  done
  export DISPLAY=:$(<"$number")
}

# Stage FILE...: copies files into the stage.
Stage() { cp -r -- "$@" "$root$work/stage/"; }

# Built PROGRAM...: puts cross-built programs into the stage.
programs=${KRNQB_WINDOWS_BUILDS:-$tree/build/windows}-$architecture/bin
Built() {
  local program
  for program; do
    [ -f "$programs/$program" ] || Fail "$program is not built: run script/windows"
    Stage "$programs/$program"
  done
}

# BeginSuite: creates a fresh clone of the prefix and an empty stage. The registry's files are copied, not linked, since
# the server writes them in place.
BeginSuite() {
  [ -f "$root$basePrefix/ready" ] || Fail "no Wine prefix: run the test Windows.WineIsReady.$architecture first"
  MountSystem
  rm -rf "$root${work:?}"
  mkdir -p "$root$work/stage"
  cp -al "$root$basePrefix" "$root$work/prefix"
  cp --remove-destination "$root$basePrefix"/*.reg "$root$work/prefix/"
  serverPrefix=$work/prefix
}
