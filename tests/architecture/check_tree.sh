#!/usr/bin/env bash
# usage: check_tree.sh TREE
#
# Fails, naming file, line and rule, unless the code in TREE/include, TREE/src and TREE/tests keeps to the map in
# ARCHITECTURE.md: includes run one way between all rooms, nested ones included; the header of an outside library or
# toolkit is included only where it belongs; no public header names such a library; a file has at most 500 lines; a
# folder holds at most 40 sources; no file's name begins with its folder's.
set -euo pipefail

tree=$1
cd "$tree"
folders=(include src)
if [ -d tests ]; then folders+=(tests); fi
files=$(find "${folders[@]}" -type f \( -name '*.h' -o -name '*.cpp' \) | sort)
if [ -z "$files" ]; then
  echo "$tree: no sources found" >&2
  exit 2
fi

# shellcheck disable=SC2086
awk '
  # Room NAME BELOW: a folder of src and the rooms right below it. It may include these and all that is below them.
  function Room(name, below) { known[name] = 1; directlyBelow[name] = below }

  function MayInclude(room, target,   parts, count, i) {
    if (room == target || (room, target) in cachedYes) return 1
    if ((room, target) in cachedNo) return 0
    count = split(directlyBelow[room], parts, " ")
    for (i = 1; i <= count; i++) {
      if (MayInclude(parts[i], target)) { cachedYes[room, target] = 1; return 1 }
    }
    cachedNo[room, target] = 1
    return 0
  }

  BEGIN {
    Room("support", "")
    Room("support/windows", "support")
    Room("xml", "support")
    Room("qbxml", "xml")
    Room("plan", "xml")
    Room("import/lists", "qbxml plan")
    Room("import", "import/lists")
    Room("import/accounts", "import")
    Room("import/amounts", "import")
    Room("import/growth", "import")
    Room("import/past_performance", "import/amounts")
    Room("component", "import/accounts import/growth import/past_performance")
    Room("ui", "component")
    Room("ui/qt", "ui")
    Room("ui/win32", "ui support/windows")
    Room("com/values", "support/windows")
    Room("com/calls", "com/values qbxml")
    Room("com/objects", "com/calls")
    Room("com/registration", "com/values")
    Room("com", "com/objects com/registration ui/win32")
    Room("setup", "com/registration")
    Room("html", "support")
    Room("files", "support")
    Room("files/windows", "files")
    Room("database/storage", "support")
    Room("database", "database/storage")
    Room("company/records", "database files xml")
    Room("company/reports", "company/records")
    Room("company", "company/reports")
    Room("ledger", "database files")
    Room("sample_company", "company")
    Room("plan_file", "files xml")
    Room("plan_file/history", "plan_file")
    Room("plan_file/views", "plan_file")
    Room("spreadsheet", "plan_file/history plan_file/views")
    Room("profit_and_loss", "files xml")
    Room("reconcile", "company plan_file/history plan_file/views profit_and_loss")
    Room("cli/system", "support")
    Room("cli/console", "cli/system ui plan_file/history plan_file/views")
    Room("cli/exchange", "cli/console company ledger")
    Room("cli/import/notices", "cli/console")
    Room("cli/import/progress", "cli/console")
    Room("cli/import/summary", "cli/console")
    Room("cli/import", "cli/exchange cli/import/notices cli/import/progress cli/import/summary")
    Room("cli/explain", "cli/import")
    Room("cli/company", "cli/import sample_company")
    Room("cli/plan", "cli/console spreadsheet")
    Room("cli/reconcile", "cli/company reconcile")
    Room("cli/record", "cli/company")
    Room("cli/dialog", "cli/import")
    Room("cli/report", "cli/explain cli/reconcile html")
    Room("cli/doctor", "cli/company")
    Room("cli/batch", "cli/company html")
    Room("cli", "cli/batch cli/doctor cli/company cli/plan cli/record cli/report cli/dialog")
    # Single headers that a room may include from another one.
    mayFile["company/records", "qbxml/envelope.h"] = 1
    mayFile["cli/dialog", "ui/win32/toolkit.h"] = 1
    mayFile["cli/exchange", "com/calls/installed_classes.h"] = 1
    longest = 500
    most = 40
  }

  function Report(line, rule) {
    print FILENAME ":" line ": " rule
    failed = 1
  }

  function FolderOf(path) { return path ~ /\// ? substr(path, 1, match(path, /\/[^\/]*$/) - 1) : "" }

  function CheckOwnHeader(header,   target) {
    if (header ~ /^krnqb\//) return
    target = FolderOf(header)
    if (isPublic) Report(FNR, "a public header may include only krnqb/, not \"" header "\"")
    else if (header ~ /\.\./ || !(target in known))
      Report(FNR, "includes are named from src, as in \"support/date.h\", not \"" header "\"")
    else if (!MayInclude(room, target) && !((room, header) in mayFile))
      Report(FNR, "src/" room " may not include \"" header "\"")
  }

  function CheckOutsideHeader(header) {
    if (header ~ /^libxml\// && FILENAME !~ /^(src\/xml\/.*|tests\/faults\/failing_memory)\.cpp$/)
      Report(FNR, "libxml2 is for .cpp files of src/xml, not <" header ">")
    if (header ~ /^sqlite3/ && FILENAME !~ /^(src\/database\/.*|tests\/faults\/failing_memory)\.cpp$/)
      Report(FNR, "SQLite is for .cpp files of src/database, not <" header ">")
    if (header ~ /^xxh/ && FILENAME !~ /^src\/database\/storage\/.*\.cpp$/)
      Report(FNR, "xxHash is for .cpp files of src/database/storage, not <" header ">")
    if (header ~ /^nettle\// && FILENAME !~ /^src\/plan_file\/history\/.*\.cpp$/)
      Report(FNR, "Nettle is for .cpp files of src/plan_file/history, not <" header ">")
    if (header ~ /^xlsxwriter/ && FILENAME !~ /^src\/spreadsheet\/.*\.cpp$/)
      Report(FNR, "libxlsxwriter is for .cpp files of src/spreadsheet, not <" header ">")
    if (header ~ /^rapidjson\// && FILENAME !~ /^(src\/qbxml\/.*|tests\/json_schema)\.cpp$/)
      Report(FNR, "RapidJSON is for .cpp files of src/qbxml, not <" header ">")
    if (header ~ /^(ole|oc|ob|unkn|disp).*\.h$/ && room !~ /^com(\/|$)/)
      Report(FNR, "automation headers are for src/com, not <" header ">")
    if (header ~ /^Q[A-Z]/ && room != "ui/qt")
      Report(FNR, "Qt is for src/ui/qt, not <" header ">")
    if (header ~ /^(xcb|X11)\// && FILENAME !~ /^src\/ui\/qt\/.*\.cpp$/)
      Report(FNR, "X11 is for .cpp files of src/ui/qt, not <" header ">")
    if (header ~ /^(windows|commdlg|commctrl)\.h$/ && room == "ui")
      Report(FNR, "of the dialogs, Windows is for src/ui/win32, not <" header ">")
    if (header ~ /^krnqb\//) Report(FNR, "own headers are included with quotes, not <" header ">")
  }

  # "plan/plan_rows.h" says its folder twice; so does "records/record_text.h".
  function CheckName(folder, name,   last, single) {
    last = folder
    sub(/.*\//, "", last)
    if (index(name, last "_") == 1 || index(name, last ".") == 1)
      Report(1, "the name begins with its folder\047s, \"" last "\"")
    single = last
    if (sub(/s$/, "", single) && single != "" && index(name, single "_") == 1)
      Report(1, "the name begins with its folder\047s, \"" single "\"")
  }

  FNR == 1 {
    split(FILENAME, path, "/")
    isPublic = path[1] == "include"
    isTest = path[1] == "tests"
    folder = FolderOf(FILENAME)
    room = isPublic || isTest ? "" : substr(folder, 5)
    if (!isPublic) CheckName(folder, substr(FILENAME, length(folder) + 2))
    if (!isPublic && !isTest && !(room in known)) Report(1, "src/" room " has no place in the order of the rooms")
    if (++sources[folder] == most + 1) Report(1, folder " holds more than " most " sources")
  }

  FNR == longest + 1 { Report(FNR, "more than " longest " lines") }

  !isTest && /^[ \t]*#[ \t]*include/ {
    header = $0
    if (match(header, /"[^"]*"/)) CheckOwnHeader(substr(header, RSTART + 1, RLENGTH - 2))
    else if (match(header, /<[^>]*>/)) CheckOutsideHeader(substr(header, RSTART + 1, RLENGTH - 2))
    else Report(FNR, "an include that names no header")
  }

  isPublic {
    text = tolower($0)
    if (text ~ /libxml|xmlnode|xmldoc|sqlite|(^|[^a-z])(qt|fmt)([^a-z]|$)/ || $0 ~ /<Q[A-Z]/)
      Report(FNR, "a public header names an outside library")
  }

  END { exit failed }
' $files
