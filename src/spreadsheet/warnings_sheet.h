#pragma once

#include <optional>
#include <string>
#include <vector>

#include "plan_file/history/entry.h"
#include "spreadsheet/plan_sheets.h"
#include "spreadsheet/sheet.h"

namespace krnqb::spreadsheet {

/// An amount that an import left out. Texts that are unknown are empty.
struct LeftOutAmount {
  std::string date = {};
  std::string transaction = {};
  std::string account = {};
  std::string customer = {};
  std::string amount = {};   ///< as QuickBooks gave it: any text
  std::string reason = {};   ///< such as "no account"
  std::string meaning = {};  ///< such as "lost"
  std::string period = {};   ///< of the request
};

/// What is known of the import whose result a plan is.
struct LastImport {
  plan_file::HistoryEntry entry;
  bool edited = false;  ///< whether another program has changed the plan since
};

/// What a workbook reports besides a plan's cells.
struct ExportNotes {
  std::optional<LastImport> lastImport;
  std::string
      historyFault;     ///< why the last import is unknown; empty if it is known or the plan has no import
  std::string journal;  ///< the journal's name; empty without one
  std::vector<LeftOutAmount> leftOut;
  std::vector<std::string> journalWarnings;  ///< what else the journal says
};

/// The sheet that says what is known of the last import, what a sheet shows otherwise than the plan has it,
/// and what the import left out.
Sheet WarningsOf(const PlanSheets& sheets, const ExportNotes& notes);

/// Returns every warning of that sheet: those of `sheets`, of the summary, and of the notes.
std::vector<SheetWarning> AllWarnings(const PlanSheets& sheets, const ExportNotes& notes);

}  // namespace krnqb::spreadsheet
