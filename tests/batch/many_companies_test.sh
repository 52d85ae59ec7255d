#!/usr/bin/env bash
# usage: many_companies_test.sh TREE PROGRAMS FOLDER
#
# Runs the commands of docs/batch.md in FOLDER with 30 generated companies, or 300 with KRNQB_NIGHTLY=1, twelve of them
# broken in different ways: the others are done, the summary names the twelve with their causes, the repetition runs
# these alone, and after they are mended all are done. Then the command for several machines, with a stand-in for ssh.
# Ends with 77 if GNU parallel is missing.
set -euo pipefail

tree=$1
programs=$2
folder=$3
PATH="$programs:$PATH"
count=30
if [ "${KRNQB_NIGHTLY:-}" = 1 ]; then count=300; fi

if ! parallel --version 2>/dev/null | grep '^GNU parallel' >/dev/null; then
  echo "GNU parallel is missing"
  exit 77
fi

Fail() {
  echo "FAILED: $*" >&2
  exit 1
}

# Expect WHAT ACTUAL EXPECTED
Expect() { [ "$2" = "$3" ] || Fail "$1: $2 instead of $3"; }

# Block NUMBER: runs a block of commands of the document, counted from 1.
Block() {
  local commands
  commands=$(awk -v number="$1" '/^```sh$/ { inside = ++count == number; next } /^```/ { inside = 0 } inside' \
    "$tree/docs/batch.md")
  [ -n "$commands" ] || Fail "docs/batch.md has no block $1"
  bash -euo pipefail -c "$commands" </dev/null
}

# Runs: how many imports the log has.
Runs() { echo $(($(wc -l <imports.log) - 1)); }

rm -rf "$folder"
mkdir -p "$folder"/books "$folder"/plans "$folder"/whole "$folder"/home
cd "$folder"
export PARALLEL_HOME=$folder/home

# One client has a name that a shell would take apart.
{
  echo "O'Neil & Sons"
  seq -f 'client%03g' 2 "$count"
} >clients.txt
parallel --arg-file clients.txt \
  krnqb company generate books/{}.qbw --transactions 120 --years 2002-2002 --seed '{#}' '&&' \
  krnqb plan new plans/{}.kpf --product ald --start 2003-01 >/dev/null
cp -r books plans whole/

# The twelve ways, each with the beginning of its cause.
declare -A cause
Broken() { cause[$1]=$2; }

Broken client005 "There is no company file"
rm books/client005.qbw
Broken client006 "The file .* is not a company file"
echo "Dear Sirs" >books/client006.qbw
Broken client007 "The company file .* is damaged"
printf '\1\2\3\4' | dd of=books/client007.qbw bs=1 seek=3000 conv=notrunc status=none
Broken client008 "A load into the company file .* was interrupted"
pages=$(($(stat -c %s books/client008.qbw) / 16384))
{
  printf '\xd9\xd5\x05\xf9\x20\xa1\x63\xd7\0\0\0\0\0\0\0\7\0\0\0'
  # shellcheck disable=SC2059
  printf "\\x$(printf %02x "$pages")\\0\\0\\2\\0\\0\\0\\x40\\0"
  head -c 484 /dev/zero
} >books/client008.qbw-journal
Broken client009 "Your QuickBooks must be updated"
rm books/client009.qbw
krnqb company new books/client009.qbw --name Old --fiscal-month January --processor 1.0 >/dev/null
Broken client010 "an English regional setting"
cat >month.xml <<'XML'
<?xml version="1.0"?>
<QBXML><QBXMLMsgsRs><CompanyQueryRs requestID="101" statusCode="0" statusSeverity="Info" statusMessage="Status OK">
<CompanyRet><CompanyName>Garten</CompanyName><FirstMonthFiscalYear>Januar</FirstMonthFiscalYear></CompanyRet>
</CompanyQueryRs></QBXMLMsgsRs></QBXML>
XML
krnqb company load books/client010.qbw month.xml >/dev/null
Broken client011 "cannot open the plan plans/client011.kpf: No such file"
rm plans/client011.kpf
Broken client012 "cannot open the plan plans/client012.kpf: line"
head -c 1000 whole/plans/client012.kpf >plans/client012.kpf
Broken client013 "the plan plans/client013.kpf does not state its product"
sed -i 's/ product="ald"//' plans/client013.kpf
Broken client014 "some data could not be read; nothing was written: "
sed -i 's/id="21000000000000000000000000000600"/id="9"/' plans/client014.kpf
Broken client015 "cannot lock the plan with .*: it is a symbolic link"
ln -s elsewhere plans/client015.kpf.lock
Broken client016 "cannot keep the plan's version in .*: it is not a folder"
touch plans/client016.kpf.history
Expect "broken ways" "${#cause[@]}" 12

begun=$(date +%s%N)
Block 1 >first.txt
echo "$count imports and their summary: $((($(date +%s%N) - begun) / 1000000)) ms"
Expect "runs" "$(Runs)" "$count"
Expect "first line" "$(head -n 1 first.txt | sed 's/ (.*//')" \
  "$count imports in results: $((count - 12)) done, 12 not done"

# CheckCauses: fails unless the summary names the twelve broken clients alone, each with its own cause.
CheckCauses() {
  local name reason
  krnqb summary results --json >summary.json || Expect "exit code of the summary" $? 3
  python3 - >not_done.txt <<'PYTHON'
import json
for each in json.load(open("summary.json"))["imports"]:
    if not each["done"]: print(each["name"], each["reason"], sep="\t")
PYTHON
  Expect "not done" "$(wc -l <not_done.txt)" 12
  while IFS=$'\t' read -r name reason; do
    [ -n "${cause[$name]:-}" ] || Fail "$name is not broken, but not done: $reason"
    grep -E "${cause[$name]}" <<<"$reason" >/dev/null || Fail "$name: \"$reason\" is not \"${cause[$name]}\""
    grep -F "$name" first.txt >/dev/null || Fail "$name is not in the summary"
  done <not_done.txt
  Expect "different causes" "$(cut -f 2 not_done.txt | sed 's/client[0-9]*//g' | sort -u | wc -l)" 12
}
CheckCauses

Block 2
Expect "mode of the page" "$(stat -c %a imports.html)" 600
Expect "mode of the CSV file" "$(stat -c %a imports.csv)" 600
Expect "lines of the CSV file" "$(wc -l <imports.csv)" $((count + 1))
grep -F "$((count - 12)) of $count imports are done, 12 are not." imports.html >/dev/null || Fail "the page counts wrongly"

# Nothing is mended: the twelve alone run again and fail again.
stat -c '%n %Y' results/*.json | grep -vE 'client0(0[5-9]|1[0-6])' >before.txt
Block 3 >/dev/null
Expect "runs after a repetition" "$(Runs)" $((count + 12))
stat -c '%n %Y' results/*.json | grep -vE 'client0(0[5-9]|1[0-6])' | cmp - before.txt || Fail "done imports ran again"
CheckCauses

for name in "${!cause[@]}"; do
  rm -rf plans/"$name".kpf.lock plans/"$name".kpf.history books/"$name".qbw-journal
  cp whole/books/"$name".qbw books/
  cp whole/plans/"$name".kpf plans/
done
Block 3 >last.txt
Expect "runs after mending" "$(Runs)" $((count + 24))
Expect "first line after mending" "$(head -n 1 last.txt | sed 's/ (.*//')" "$count imports in results: $count done, 0 not done"
krnqb summary results >/dev/null || Fail "the summary of $count imports that are done has exit code $?"

# Nothing is left to do.
Block 3 >/dev/null
Expect "runs at the end" "$(Runs)" $((count + 24))

# The command for several machines: a stand-in for ssh leaves out the machine's name and runs the rest here.
mkdir remote
cat >remote/ssh <<'SSH'
#!/usr/bin/env bash
echo "$1" >>"$SSH_CALLS"
shift
if [[ $1 == -- ]]; then shift; fi
exec bash -c "$*"
SSH
chmod +x remote/ssh
export PARALLEL_SSH=$folder/remote/ssh SSH_CALLS=$folder/remote/calls
rm -r results imports.log
command=$(awk '/^    parallel --sshlogin/ { inside = 1 } inside { print } inside && !/\\$/ { exit }' "$tree/docs/batch.md")
[ -n "$command" ] || Fail "docs/batch.md has no command for several machines"
mkdir results
bash -euo pipefail -c "$command" </dev/null
Expect "runs on several machines" "$(Runs)" "$count"
grep -x office1 remote/calls >/dev/null || Fail "nothing ran on office1"
krnqb summary results >/dev/null || Fail "some imports on several machines are not done"
