# shellcheck shell=bash
# The test processor itself, called late-bound, since the other suites rely on it.
source ./suites/registered.sh

Register KRN6_TestProcessor.dll
Stage scripts/processor.js
Stage "$area/recordings/1.1-ald-none.jsonl"
export KRNQB_RECORDING=1.1-ald-none.jsonl

# Answers LINE...: the lines that the script must print, except its last.
Answers() {
  local printed
  printed=$(Script 60 "end of processor.js" processor.js | sed '$d')
  diff <(printf '%s\n' "$@") - <<<"$printed" || Fail "the answers of the test processor differ"
}

Answers "connection: undefined" "session: replay" "company: C:\\Books\\nursery.qbw" "major: 1" "minor: 1" "request: January" \
  "unknown request refused: 80004005 the recording holds no answer to the request <none/>"

export KRNQB_REFUSED_CALL=connection KRNQB_REFUSAL_TEXT="not today" KRNQB_REFUSAL_NUMBER=80040408
Answers "connection refused: 80040408 not today" "session: replay" "company: C:\\Books\\nursery.qbw" "major: 1" "minor: 1" \
  "request: January" "unknown request refused: 80004005 the recording holds no answer to the request <none/>"

export KRNQB_REFUSED_CALL=request:2
Answers "connection: undefined" "session: replay" "company: C:\\Books\\nursery.qbw" "major: 1" "minor: 1" "request: January" \
  "unknown request refused: 80040408 not today"

export KRNQB_CALL_LOG=calls.txt
rm -f "$root$work/stage/calls.txt"
Answers "connection: undefined" "session: replay" "company: C:\\Books\\nursery.qbw" "major: 1" "minor: 1" "request: January" \
  "unknown request refused: 80040408 not today"
diff - "$root$work/stage/calls.txt" <<'CALLS' || Fail "the call log differs"
creation
connection id, name
session "", mode 2
company
major
minor
request
request
CALLS
