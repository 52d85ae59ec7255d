# shellcheck shell=bash
# Runs the hosts of examples/ for Windows: the scripts unchanged, and the C++ programs, which are built here.
source ./suites/registered.sh

Register KRN6_QB2002.dll KRN6_TestProcessor.dll KRN6_TestBridge.dll
stage=$root$work/stage
Stage "$area/recordings/1.1-ald-none.jsonl"
export KRNQB_RECORDING=1.1-ald-none.jsonl
progress=$'20 % Processing...\n40 % Processing...\n60 % Processing...\n80 % Processing...\n100 % Processing...\n'

# Prints RESULT TEXT PROGRAM [ARGUMENT...]: runs a host, which must end with RESULT and print TEXT.
Prints() {
  local expected=$1 text=$2 result=0 output
  shift 2
  output=$(Windows 60 "$@" 2>&1 | tr -d '\r' | sed 's/^ *\([0-9]* %\)/\1/') || result=$?
  [ "$result" -eq "$expected" ] || Fail "$* ended with $result, not $expected: $output"
  [ "$output" = "$text" ] || Fail "$* printed: $output"
}

# Reports PATTERN PROGRAM [ARGUMENT...]: runs a host, which must fail with 1; its last line must match PATTERN.
Reports() {
  local pattern=$1 result=0 output
  shift
  output=$(Windows 60 "$@" 2>&1 | tr -d '\r') || result=$?
  [ "$result" -eq 1 ] || Fail "$* ended with $result, not 1: $output"
  tail -n 1 <<<"$output" | grep -qE "$pattern" || Fail "$* printed: $output"
}

# Imports PROGRESS PROGRAM [ARGUMENT...]: runs a host on a new plan, which must print PROGRESS and be the one that the
# command line imports. Then it must report an error of the pair and a raised one, and leave the plan as it was.
Imports() {
  local progress=$1
  shift
  cp "$area/recordings/ald.kpf" "$stage/nursery.kpf"
  Prints 0 "${progress}The accounts are in nursery.kpf" "$@" nursery.kpf
  "$KRNQB_PROGRAM" plan show "$stage/nursery.kpf" --cells | cmp - "$area/recordings/1.1-ald-none.cells" ||
    Fail "the plan of $* differs from the recorded import"

  cp "$stage/nursery.kpf" "$stage/before.kpf"
  KRNQB_REFUSED_CALL=connection KRNQB_REFUSAL_TEXT="not today" Prints 1 \
    "${progress:+${progress%%$'\n'*}$'\n'}Not imported: Error (-2147220480): not today (error -2147220480)" "$@" nursery.kpf
  withoutLibraries=msxml,msxml2,msxml3,msxml4,msxml6  # the plan cannot be read
  Reports '^Not imported: .+ \((error -?[0-9]+|[0-9A-F]{8})\)$' "$@" nursery.kpf
  withoutLibraries=
  cmp "$stage/before.kpf" "$stage/nursery.kpf" || Fail "$* changed the plan although the import failed"
  echo "$* imports, and reports failures"
}

# RunScript FILE LINE: runs a script unchanged, then with LINE instead of the one that connects it to the events, since Wine's
# script host cannot connect them. Text on standard input is added to that copy.
RunScript() {
  local script=$1 line=$2
  Stage "$tree/examples/$script"
  script=${script##*/}
  Imports '' cscript //nologo "$script"
  LINE=$line awk '/WScript.ConnectObject/ { print ENVIRON["LINE"]; next } { print }' "$stage/$script" - >"$stage/connected-$script"
  Imports "$progress" cscript //nologo "connected-$script"
  Prints 1 'Not imported: there is no plan missing.kpf' cscript //nologo "$script" missing.kpf
}

RunScript vbscript/import.vbs \
  'Set bridge = WScript.CreateObject("KRN6_TestBridge.EventBridge"): bridge.Connect exchange, New Handlers' <<'END'
Dim bridge
Class Handlers
  Public Sub XMLprocessing(oXML)
  End Sub
  Public Sub AfterImport()
  End Sub
  Public Sub ProgressBarChange(percent, description)
    exchange_ProgressBarChange percent, description
  End Sub
End Class
END
RunScript jscript/import.js \
  'var bridge = new ActiveXObject("KRN6_TestBridge.EventBridge"); bridge.Connect(exchange, { AfterImport: function () {},
     XMLprocessing: function (oXML) {}, ProgressBarChange: exchange_ProgressBarChange });' </dev/null

# The C++ programs.
build=$area/example_host-$architecture
rm -rf "$build"
if ! {
  cmake -S "$tree/examples/cpp-windows" -B "$build" -G Ninja \
    --toolchain "$tree/cmake/toolchains/$architecture-w64-mingw32.cmake" \
    -D KRNQB_INTERFACE="${programs%/bin}/idl" -D CMAKE_CXX_FLAGS="-Wall -Wextra -Werror" &&
    cmake --build "$build"
} >"$stage/build.log" 2>&1; then
  cat "$stage/build.log"
  Fail "examples/cpp-windows does not build"
fi
for program in early_bound late_bound; do
  Stage "$build/$program.exe"
  Imports "$progress" "$program.exe"
  Prints 1 'Not imported: there is no plan missing.kpf' "$program.exe" missing.kpf
  Prints 2 "usage: $program PLAN" "$program.exe"
done
rm -rf "$build"
Windows 60 regsvr32 /s /u KRN6_QB2002.dll
for program in early_bound late_bound; do
  Reports '^Not imported: .* \((80040154|800401F3)\)$' "$program.exe" nursery.kpf
done
