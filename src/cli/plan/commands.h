#pragma once

#include <optional>
#include <string>

#include "cli/console/command_end.h"
#include "cli/console/streams.h"
#include "krnqb/enumerations.h"
#include "plan_file/attributes.h"

namespace krnqb::cli {

// The commands of `krnqb plan`: what was typed, and how it runs.

struct NewPlanOptions {
  std::string file;
  QBKRNproduct product = QBKRN_ALD;
  YearMonth start;
};

struct ShowPlanOptions {
  std::string file;
  std::optional<std::string> table;
  bool values = false;
  bool cells = false;
  bool json = false;
};

struct ExportPlanOptions {
  std::string file;
  std::optional<std::string> workbookFile;  ///< one of this and the next is given
  std::optional<std::string> csvFolder;
  std::optional<std::string> journalFile;
};

/// Creates a plan file with the tables of its product.
CommandEnd Run(const NewPlanOptions& options, const Console& console);

/// Prints a plan's tables, or one of them, for people, cell by cell or as JSON.
ExitCode Run(const ShowPlanOptions& options, const Console& console);

/// Writes a plan as a spreadsheet, as CSV files or as both.
CommandEnd Run(const ExportPlanOptions& options, const Console& console);

}  // namespace krnqb::cli
