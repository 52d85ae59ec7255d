#!/usr/bin/env bash
# usage: check_tree.sh TREE
#
# Fails, naming file, line and rule, when an include in TREE/include or TREE/src runs against the order of the
# folders, when an outside library's or toolkit's header is included elsewhere than where it belongs, when a public
# header names such a library, or when a file has more than 500 lines.
set -euo pipefail

tree=$1
cd "$tree"
files=$(find include src -type f \( -name '*.h' -o -name '*.cpp' \) | sort)
if [ -z "$files" ]; then
  echo "$tree: no sources found" >&2
  exit 2
fi

# shellcheck disable=SC2086
awk '
  BEGIN {
    # What a folder of src may include beside include/krnqb.
    may["support"] = "support"
    may["qbxml"] = "qbxml support"
    may["plan"] = "plan support"
    may["import"] = "import qbxml plan support"
    may["component"] = "component import qbxml plan support"
    may["ui"] = "ui component import qbxml plan support"
    may["embedded"] = "embedded support"
    may["com"] = "com ui component import qbxml plan support"
    may["cli"] = "cli embedded ui component import qbxml plan support"
    # Single headers that a folder may include from another one.
    mayFile["embedded", "qbxml/envelope.h"] = 1
    longest = 500
  }

  function Report(line, rule) {
    print FILENAME ":" line ": " rule
    failed = 1
  }

  function Contains(list, word) { return index(" " list " ", " " word " ") > 0 }

  function CheckOwnHeader(header,   parts, target) {
    if (header ~ /^krnqb\//) return
    split(header, parts, "/")
    target = parts[1]
    if (isPublic) Report(FNR, "a public header may include krnqb/ alone, not \"" header "\"")
    else if (header ~ /\.\./ || header !~ /\// || !(target in may))
      Report(FNR, "includes are named from src, as in \"support/date.h\", not \"" header "\"")
    else if (header ~ /^ui\/(qt|win32)\// && FILENAME !~ ("^src/" parts[1] "/" parts[2] "/") && folder == "ui")
      Report(FNR, "what the dialogs do knows no toolkit, not \"" header "\"")
    else if (!Contains(may[folder], target) && !((folder, header) in mayFile))
      Report(FNR, "src/" folder " may not include \"" header "\"")
  }

  function CheckOutsideHeader(header) {
    if (header ~ /^libxml\// && FILENAME !~ /^src\/support\/.*\.cpp$/)
      Report(FNR, "libxml2 is for .cpp files of src/support, not <" header ">")
    if (header ~ /^sqlite3/ && FILENAME !~ /^src\/embedded\/.*\.cpp$/)
      Report(FNR, "SQLite is for .cpp files of src/embedded, not <" header ">")
    if (header ~ /^(ole|oc|ob|unkn|disp).*\.h$/ && folder != "com")
      Report(FNR, "automation headers are for src/com, not <" header ">")
    if (header ~ /^Q[A-Z]/ && FILENAME !~ /^src\/ui\/qt\//)
      Report(FNR, "Qt is for src/ui/qt, not <" header ">")
    if (header ~ /^(xcb|X11)\// && FILENAME !~ /^src\/ui\/qt\/.*\.cpp$/)
      Report(FNR, "X11 is for .cpp files of src/ui/qt, not <" header ">")
    if (header ~ /^(windows|commdlg|commctrl)\.h$/ && folder == "ui" && FILENAME !~ /^src\/ui\/win32\//)
      Report(FNR, "of the dialogs, Windows is for src/ui/win32, not <" header ">")
    if (header ~ /^krnqb\//) Report(FNR, "own headers are included with quotes, not <" header ">")
  }

  FNR == 1 {
    split(FILENAME, path, "/")
    isPublic = path[1] == "include"
    folder = isPublic ? "" : path[2]
    if (!isPublic && !(folder in may)) Report(1, "src/" folder " has no place in the order of the folders")
  }

  FNR == longest + 1 { Report(FNR, "more than " longest " lines") }

  /^[ \t]*#[ \t]*include/ {
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
