#!/usr/bin/env bash
# usage: check_tree_test.sh FOLDER
#
# Shows that check_tree.sh tells good trees from bad ones: each case is a tree of its own, made in the subfolder
# check_tree_test of FOLDER.
set -euo pipefail

checker=$(dirname "$0")/check_tree.sh
checker=$(cd "$(dirname "$checker")" && pwd)/check_tree.sh
folder=$1/check_tree_test
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

# Many FOLDER COUNT: a tree with that many sources in one folder of src.
Many() {
  TreeWith "$1/source_1.cpp" '#include "krnqb/error.h"'
  local number
  for ((number = 2; number <= $2; number++)); do echo "//" >"$folder/tree/$1/source_$number.cpp"; done
}

# Each room may include what is below it ...
Accepts src/support/date.cpp '#include "support/date.h"\n#include "krnqb/error.h"'
Accepts src/qbxml/session.cpp '#include "support/date.h"\n#include "xml/tree.h"'
Accepts src/plan/rows.cpp '#include "support/date.h"'
Accepts src/import/lists/accounts.cpp '#include "qbxml/session.h"\n#include "plan/rows.h"\n#include "support/date.h"'
Accepts src/import/state.h '#pragma once\n#include "import/lists/accounts.h"'
Accepts src/import/past_performance/writing.cpp '#include "import/amounts/balances.h"\n#include "import/state.h"'
Accepts src/component/go.cpp '#include "import/growth/formulas.h"\n#include "plan/rows.h"'
Accepts src/ui/dialog.cpp '#include "component/go.h"'
Accepts src/company/records/request.cpp '#include "support/date.h"\n#include "qbxml/envelope.h"'
Accepts src/company/file.cpp '#include "company/records/store.h"\n#include "company/reports/rows.h"\n#include "files/lock.h"'
Accepts src/sample_company/generator.cpp '#include "company/file.h"'
Accepts src/plan_file/tables.cpp '#include "files/lock.h"'
Accepts src/cli/main.cpp '#include "sample_company/generator.h"\n#include "ui/dialog.h"\n#include "cli/import/log.h"'
Accepts src/com/exchange.cpp '#include "com/values/text.h"\n#include "ui/dialog.h"\n#include "component/go.h"'
# ... and nothing above or beside it.
Refuses include/krnqb/face.h '#include "support/date.h"'
Refuses src/support/date.cpp '#include "qbxml/envelope.h"'
Refuses src/support/date.cpp '#include "xml/tree.h"'
Refuses src/qbxml/session.cpp '#include "plan/rows.h"'
Refuses src/plan/rows.cpp '#include "qbxml/session.h"'
Refuses src/plan/rows.h '#pragma once\n#include "import/state.h"'
Refuses src/import/lists/accounts.h '#pragma once\n#include "import/state.h"'
Refuses src/import/state.h '#pragma once\n#include "import/amounts/balances.h"'
Refuses src/import/amounts/balances.cpp '#include "import/past_performance/writing.h"'
Refuses src/import/growth/formulas.cpp '#include "import/amounts/balances.h"'
Refuses src/import/state.cpp '#include "component/go.h"'
Refuses src/component/go.cpp '#include "ui/dialog.h"'
Refuses src/component/go.cpp '#include "company/file.h"'
Refuses src/ui/dialog.cpp '#include "cli/console/streams.h"'
Refuses src/files/lock.cpp '#include "plan_file/tables.h"'
Refuses src/company/file.cpp '#include "qbxml/session.h"'
Refuses src/company/file.cpp '#include "plan/rows.h"'
Refuses src/company/records/store.cpp '#include "company/reports/rows.h"'
Accepts src/company/records/schema.cpp '#include "database/schema.h"\n#include "database/storage/format.h"'
Accepts src/database/connection.cpp '#include "database/storage/file_system.h"'
Refuses src/database/storage/format.cpp '#include "database/connection.h"'
Refuses src/database/connection.cpp '#include "company/records/store.h"'
Refuses src/company/reports/rows.cpp '#include "company/file.h"'
Refuses src/company/file.cpp '#include "sample_company/generator.h"'
Refuses src/plan_file/tables.cpp '#include "company/file.h"'
Refuses src/cli/console/streams.cpp '#include "cli/import/log.h"'
Refuses src/cli/import/log.cpp '#include "cli/company/inquiry.h"'
Refuses src/cli/plan/listing.cpp '#include "cli/import/log.h"'
Refuses src/cli/company/inquiry.cpp '#include "cli/command_line.h"'
Refuses src/com/exchange.cpp '#include "company/file.h"'
Refuses src/com/exchange.cpp '#include "cli/console/streams.h"'
Refuses src/com/values/text.cpp '#include "com/calls/named_calls.h"'
Refuses src/com/registration/keys.cpp '#include "com/exchange.h"'
Refuses src/component/go.cpp '#include "com/values/text.h"'
Refuses src/support/date.cpp '  #  include "cli/console/streams.h"'
Refuses src/billing/bill.cpp '#include "krnqb/error.h"'
Refuses src/import/billing/bill.cpp '#include "krnqb/error.h"'
# Includes are named from src.
Refuses src/support/date.cpp '#include "date.h"'
Refuses src/support/date.cpp '#include "../qbxml/envelope.h"'
Refuses src/support/date.cpp '#include <krnqb/error.h>'
Refuses src/support/date.cpp '#include HEADER'
# Outside libraries stay where they belong.
Accepts src/xml/parser.cpp '#include <libxml/parser.h>'
Refuses src/xml/parser.h '#include <libxml/parser.h>'
Refuses src/plan/rows.cpp '#include <libxml/parser.h>'
Accepts src/database/connection.cpp '#include <sqlite3.h>'
Refuses src/database/connection.h '#include <sqlite3.h>'
Refuses src/company/records/store.cpp '#include <sqlite3.h>'
Refuses src/cli/main.cpp '#include <sqlite3.h>'
Accepts src/database/storage/checksum.cpp '#include <xxhash.h>'
Refuses src/database/connection.cpp '#include <xxhash.h>'
Accepts src/plan_file/history/digest.cpp '#include <nettle/sha2.h>\n#include "plan_file/file.h"'
Refuses src/plan_file/file.cpp '#include <nettle/sha2.h>'
Refuses src/plan_file/file.cpp '#include "plan_file/history/digest.h"'
Accepts src/com/text.h '#include <ole2.h>'
Refuses src/component/go.cpp '#include <ole2.h>'
Accepts src/support/text.cpp '#include <fmt/format.h>'
Refuses include/krnqb/face.h '#include <fmt/format.h>'
Refuses include/krnqb/face.h 'struct _xmlNode;'
Refuses include/krnqb/face.h 'struct sqlite3;'
Refuses include/krnqb/face.h '#include <QString>'
# What the dialogs hold and do knows no toolkit, and toolkits do not know each other.
Accepts src/ui/qt/window.cpp '#include <QDialog>\n#include <xcb/xcb.h>\n#include "ui/qt/window.h"\n#include "ui/form.h"'
Accepts src/cli/dialog/window.cpp '#include "ui/toolkit_module.h"'
Refuses src/cli/dialog/window.cpp '#include "ui/qt/toolkit.h"'
Refuses src/cli/import/log.cpp '#include "ui/qt/toolkit.h"'
Accepts src/ui/win32/window.cpp '#include <windows.h>\n#include <commdlg.h>'
Refuses src/ui/dialog.cpp '#include <QDialog>'
Refuses src/ui/dialog.cpp '#include "ui/qt/window.h"'
Refuses src/ui/win32/window.cpp '#include "ui/qt/window.h"'
Refuses src/ui/win32/window.cpp '#include <QDialog>'
Refuses src/ui/qt/window.h '#include <xcb/xcb.h>'
Refuses src/ui/dialog.cpp '#include <windows.h>'
Refuses src/cli/toolkit.cpp '#include <QApplication>'
Refuses src/component/go.cpp '#include <QString>'
Refuses src/ui/dialog.cpp '#include "company/file.h"'
# A name does not repeat its folder's.
Refuses src/plan/plan_rows.cpp '#include "krnqb/error.h"'
Refuses src/files/file_lock.cpp '#include "krnqb/error.h"'
Refuses src/plan/plan.cpp '#include "krnqb/error.h"'
Refuses tests/plan/plan_rows_test.cpp '#include "krnqb/error.h"'
Accepts src/plan/planned_rows.cpp '#include "krnqb/error.h"'
# A folder stays small enough to know.
Many src/support 39
"$checker" "$folder/tree" >/dev/null || { echo "refused, though good: 40 sources"; failures=$((failures + 1)); }
Many src/support 40
if "$checker" "$folder/tree" >/dev/null; then
  echo "accepted, though bad: 41 sources"
  failures=$((failures + 1))
fi
# Files stay short.
Accepts src/support/long.cpp "$(Lines 500)"
Refuses src/support/long.cpp "$(Lines 501)"

if [ $failures -ne 0 ]; then exit 1; fi
echo "check_tree.sh tells good trees from bad ones"
