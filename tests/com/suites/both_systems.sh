# shellcheck shell=bash
# Sourced by suites that run the same commands with krnqb.exe, in the stage, and with the krnqb of this system, in a
# folder beside it.
Built krnqb.exe
stage=$root$work/stage
linux=$root$work/linux
outputs=$root$work/outputs
mkdir -p "$linux" "$outputs"

# Readable: prints what a program has printed without what differs from run to run and from system to system: times,
# durations and the folder.
Readable() {
  tr -d '\r' | sed -E -e 's/[0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}/TIME/g' -e 's/[0-9.]+ (s|ms)\b/DURATION/g' \
    -e 's#[A-Z]:\\[^:;,]*\\stage\\#FOLDER/#g' -e "s#$linux/#FOLDER/#g"
}

# Same CODE ARGUMENT...: runs a command on both systems. Both must end with CODE and print the same.
Same() {
  local code=$1 onWindows=0 onLinux=0
  shift
  Windows 120 krnqb.exe "$@" >"$outputs/windows.out" 2>"$outputs/windows.err" || onWindows=$?
  (cd "$linux" && "$KRNQB_PROGRAM" "$@" >"$outputs/linux.out" 2>"$outputs/linux.err") || onLinux=$?
  local stream
  for stream in out err; do
    diff <(Readable <"$outputs/linux.$stream") <(Readable <"$outputs/windows.$stream") ||
      Fail "krnqb $*: std$stream differs (< Linux, > Windows)"
  done
  [ "$onLinux" = "$code" ] || Fail "krnqb $*: exit code $onLinux on Linux, not $code"
  [ "$onWindows" = "$code" ] || Fail "krnqb $*: exit code $onWindows on Windows, not $code"
}

# Without the stamp that each save writes.
WithoutStamp() { sed -E 's#<lastsavedid>[^<]*#<lastsavedid>#' "$1"; }

# SamePlan PLAN WHAT: fails unless both systems have written the same plan.
SamePlan() {
  cmp <(WithoutStamp "$linux/$1") <(WithoutStamp "$stage/$1") || Fail "$2: the plans differ"
}

# ProcessOf PARENT: prints the process that Windows runs the program in; the parent is a function in the background.
ProcessOf() {
  local child
  for child in $(cat "/proc/$1/task/$1/children" 2>/dev/null); do
    if grep -qaz '^krnqb.exe$' "/proc/$child/cmdline" 2>/dev/null && ! grep -qaz '^timeout$' "/proc/$child/cmdline"; then
      echo "$child"
      return 0
    fi
    ProcessOf "$child" && return 0
  done
  return 1
}

# ProgramAsScript FILE: writes a script that is krnqb.exe for this system, in the folder where it is called.
ProgramAsScript() {
  {
    echo '#!/usr/bin/env bash'
    declare -p root work home tellingNames wineArchitecture wineServer wineProgram steadyAddresses
    declare -f InSystem
    echo 'InSystem "$work/prefix" "${PWD#"$root"}" "$wineProgram" "$work/stage/krnqb.exe" "$@"'
  } >"$1"
  chmod +x "$1"
}
