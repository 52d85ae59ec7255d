#!/usr/bin/env bash
# usage: check_tree_test.sh FOLDER
#
# Shows that check_tree.sh tells good trees from bad ones: each case is a tree of its own, made in FOLDER.
set -euo pipefail

checker=$(dirname "$0")/check_tree.sh
checker=$(cd "$(dirname "$checker")" && pwd)/check_tree.sh
folder=$1
rm -rf "$folder"
mkdir -p "$folder"
failures=0

# TreeWith FILE TEXT: makes a tree with a good file and this one.
TreeWith() {
  rm -rf "$folder/tree"
  mkdir -p "$folder/tree/include/krnqb" "$folder/tree/src/support" "$folder/tree/$(dirname "$1")"
  printf '#pragma once\n#include <string>\n' >"$folder/tree/include/krnqb/error.h"
  printf '#include "krnqb/error.h"\n' >"$folder/tree/src/support/error.cpp"
  printf '%b\n' "$2" >"$folder/tree/$1"
}

Accepts() {
  TreeWith "$1" "$2"
  if ! "$checker" "$folder/tree" >"$folder/out" 2>&1; then
    echo "refused, though good: $1: $2"
    cat "$folder/out"
    failures=$((failures + 1))
  fi
}

# Refuses FILE TEXT: the checker fails and its message begins with the file.
Refuses() {
  TreeWith "$1" "$2"
  if "$checker" "$folder/tree" >"$folder/out" 2>&1 || ! grep -q "^$1:[0-9]*: " "$folder/out"; then
    echo "accepted, though bad: $1: $2"
    cat "$folder/out"
    failures=$((failures + 1))
  fi
}

Lines() { awk -v count="$1" 'BEGIN { for (i = 1; i < count; i++) printf "//\\n"; printf "//" }'; }

# Each folder may include what stands below it ...
Accepts src/support/date.cpp '#include "support/date.h"\n#include "krnqb/error.h"'
Accepts src/qbxml/session.cpp '#include "support/date.h"'
Accepts src/plan/rows.cpp '#include "support/date.h"'
Accepts src/import/lists.cpp '#include "qbxml/session.h"\n#include "plan/rows.h"\n#include "support/date.h"'
Accepts src/component/go.cpp '#include "import/lists.h"\n#include "plan/rows.h"'
Accepts src/ui/dialog.cpp '#include "component/go.h"'
Accepts src/embedded/company.cpp '#include "support/date.h"\n#include "qbxml/envelope.h"'
Accepts src/cli/main.cpp '#include "embedded/company.h"\n#include "ui/dialog.h"'
Accepts src/com/exchange.cpp '#include "com/text.h"\n#include "ui/dialog.h"\n#include "component/go.h"'
# ... and nothing above or beside it.
Refuses include/krnqb/face.h '#include "support/date.h"'
Refuses src/support/date.cpp '#include "qbxml/envelope.h"'
Refuses src/qbxml/session.cpp '#include "plan/rows.h"'
Refuses src/plan/rows.cpp '#include "qbxml/session.h"'
Refuses src/plan/rows.h '#pragma once\n#include "import/lists.h"'
Refuses src/import/lists.cpp '#include "component/go.h"'
Refuses src/component/go.cpp '#include "ui/dialog.h"'
Refuses src/component/go.cpp '#include "embedded/company.h"'
Refuses src/ui/dialog.cpp '#include "cli/console.h"'
Refuses src/embedded/company.cpp '#include "qbxml/session.h"'
Refuses src/embedded/company.cpp '#include "plan/rows.h"'
Refuses src/com/exchange.cpp '#include "embedded/company.h"'
Refuses src/com/exchange.cpp '#include "cli/console.h"'
Refuses src/component/go.cpp '#include "com/text.h"'
Refuses src/support/date.cpp '  #  include "cli/console.h"'
Refuses src/billing/bill.cpp '#include "krnqb/error.h"'
# Includes are named from src.
Refuses src/support/date.cpp '#include "date.h"'
Refuses src/support/date.cpp '#include "../qbxml/envelope.h"'
Refuses src/support/date.cpp '#include <krnqb/error.h>'
Refuses src/support/date.cpp '#include HEADER'
# Outside libraries stay where they belong.
Accepts src/support/xml.cpp '#include <libxml/parser.h>'
Refuses src/support/xml.h '#include <libxml/parser.h>'
Refuses src/plan/rows.cpp '#include <libxml/parser.h>'
Accepts src/embedded/database.cpp '#include <sqlite3.h>'
Refuses src/embedded/database.h '#include <sqlite3.h>'
Refuses src/cli/main.cpp '#include <sqlite3.h>'
Accepts src/com/text.h '#include <ole2.h>'
Refuses src/component/go.cpp '#include <ole2.h>'
Accepts src/support/text.cpp '#include <fmt/format.h>'
Refuses include/krnqb/face.h '#include <fmt/format.h>'
Refuses include/krnqb/face.h 'struct _xmlNode;'
Refuses include/krnqb/face.h 'struct sqlite3;'
Refuses include/krnqb/face.h '#include <QString>'
# What the dialogs hold and do knows no toolkit, and toolkits do not know each other.
Accepts src/ui/qt/window.cpp '#include <QDialog>\n#include <xcb/xcb.h>\n#include "ui/qt/window.h"\n#include "ui/form.h"'
Accepts src/cli/toolkit.cpp '#include "ui/qt/toolkit.h"'
Accepts src/ui/win32/window.cpp '#include <windows.h>\n#include <commdlg.h>'
Refuses src/ui/dialog.cpp '#include <QDialog>'
Refuses src/ui/dialog.cpp '#include "ui/qt/window.h"'
Refuses src/ui/win32/window.cpp '#include "ui/qt/window.h"'
Refuses src/ui/win32/window.cpp '#include <QDialog>'
Refuses src/ui/qt/window.h '#include <xcb/xcb.h>'
Refuses src/ui/dialog.cpp '#include <windows.h>'
Refuses src/cli/toolkit.cpp '#include <QApplication>'
Refuses src/component/go.cpp '#include <QString>'
Refuses src/ui/dialog.cpp '#include "embedded/company.h"'
# Files stay short.
Accepts src/support/long.cpp "$(Lines 500)"
Refuses src/support/long.cpp "$(Lines 501)"

if [ $failures -ne 0 ]; then exit 1; fi
echo "check_tree.sh tells good trees from bad ones"
