# shellcheck shell=bash
# How krnqb.exe saves: into folders with long names, beside other programs that have the plan open, and when it is killed.
source ./suites/both_systems.sh
Built krnqb_process_tool.exe
declare -i imports=0

for folder in "$stage" "$linux"; do
  cp "$area/recordings/1.1-ald-all.jsonl" "$folder/books.jsonl"
  cp "$area/recordings/ald.kpf" "$folder/"
done
import=(import --replay books.jsonl --expenses --income --balances all --quiet)
(cd "$linux" && cp ald.kpf new.kpf && "$KRNQB_PROGRAM" "${import[@]}" --plan new.kpf 2>/dev/null)

# IsOldOrNew PLAN WHEN: fails unless the plan is complete, as before or as after the import.
IsOldOrNew() {
  if cmp -s "$linux/ald.kpf" "$stage/$1"; then return 0; fi
  cmp -s <(WithoutStamp "$linux/new.kpf") <(WithoutStamp "$stage/$1") || Fail "$2: the plan is neither old nor new"
}
IsNew() { cmp <(WithoutStamp "$linux/new.kpf") <(WithoutStamp "$stage/$1") || Fail "$2: the plan is not that of the import"; }
# Import PLAN WHEN: fails unless the import ends with 0.
Import() { Windows 120 krnqb.exe "${import[@]}" --plan "$1" 2>"$outputs/err" || Fail "$2: $(cat "$outputs/err")"; }
# Fresh PLAN: a plan without an import, and without what earlier ones left beside it.
Fresh() {
  rm -rf "$stage/$1"*
  cp "$stage/ald.kpf" "$stage/$1"
}

# A path of more than 300 characters.
long=$(printf 'a folder with a long name %.0s' {1..4})
deep="${long% }/${long% }/${long% }"
mkdir -p "$stage/$deep"
cp "$stage/ald.kpf" "$stage/$deep/plan.kpf"
[ ${#deep} -gt 300 ] || Fail "the path has only ${#deep} characters"
Import "$deep/plan.kpf" "a path of ${#deep} characters"
IsNew "$deep/plan.kpf" "a path of ${#deep} characters"
Windows 120 krnqb.exe plan undo "$deep/plan.kpf" >/dev/null || Fail "undo at a path of ${#deep} characters"
# Windows itself has such paths only for programs that say that they can.
grep -aq '<longPathAware xmlns="http://schemas.microsoft.com/SMI/2016/WindowsSettings">true</longPathAware>' \
  "$stage/krnqb.exe" || Fail "krnqb.exe does not declare that it can use long paths"

# Hold PLAN MILLISECONDS: another program opens the plan so that it cannot be replaced. Sets holder.
Hold() {
  Windows 60 krnqb_process_tool.exe hold "$@" >"$outputs/held" &
  holder=$!
  until grep -q held "$outputs/held"; do
    kill -0 $holder 2>/dev/null || Fail "the plan could not be held open"
    sleep 0.05
  done
}

Fresh held.kpf
Hold held.kpf 700
Import held.kpf "held for a moment"
wait $holder
IsNew held.kpf "held for a moment"

Fresh held.kpf
Hold held.kpf 15000
code=0
Windows 120 krnqb.exe "${import[@]}" --plan held.kpf 2>"$outputs/err" || code=$?
[ $code = 1 ] || Fail "held for long: exit code $code"
grep -q 'another program has the file open; the file is unchanged, close it there and try again' "$outputs/err" ||
  Fail "held for long: $(cat "$outputs/err")"
cmp "$stage/ald.kpf" "$stage/held.kpf" || Fail "held for long: the plan has changed"
[ -z "$(find "$stage" -maxdepth 1 -name '*.tmp')" ] || Fail "held for long: a temporary file is left"
kill $holder 2>/dev/null || true
wait $holder 2>/dev/null || true

# KillAfter MILLISECONDS: starts an import and kills it.
KillAfter() {
  Windows 60 krnqb.exe "${import[@]}" --plan killed.kpf 2>/dev/null &
  local job=$! process=
  sleep "$(printf '0.%03d' "$1")"
  # It may have ended by now.
  if process=$(ProcessOf $job); then kill -KILL "$process" 2>/dev/null || true; fi
  wait $job 2>/dev/null || true
}

Fresh killed.kpf
begun=$(date +%s%3N)
Import killed.kpf "an import that is not killed"
duration=$(($(date +%s%3N) - begun))
kills=20
if [ "${KRNQB_NIGHTLY:-}" = 1 ]; then kills=200; fi
declare -i old=0 new=0
for ((round = 0; round < kills; ++round)); do
  Fresh killed.kpf
  KillAfter $((duration * (round + 1) / kills % 1000))
  IsOldOrNew killed.kpf "killed after $round of $kills parts of $duration ms"
  if cmp -s "$stage/ald.kpf" "$stage/killed.kpf"; then old+=1; else new+=1; fi
  Import killed.kpf "an import after one that was killed"
  IsNew killed.kpf "an import after one that was killed"
done
[ $old -gt 0 ] || Fail "no import was killed before it had saved"
echo "$kills imports killed: $old plans old, $new new, none damaged"
