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
