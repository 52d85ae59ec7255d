#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "cli/console/failure.h"
#include "krnqb/import_report.h"
#include "plan_file/changes.h"

namespace krnqb::cli {

enum class ImportResult : std::uint8_t {
  Imported,
  Unchanged,   ///< everything was read, but the plan needed no change
  DryRun,      ///< the changes were determined; nothing was written
  Incomplete,  ///< accepted although something was missing
  Cancelled,   ///< the user closed the dialog without importing
  Failed,
  WrongUsage,
  Interrupted
};

/// An event that the component raised.
struct ImportEvent {
  std::string name;
  std::int16_t percent = 0;  ///< of ProgressBarChange
  std::string description;   ///< of ProgressBarChange
};

/// The outcome of an import, filled in as it runs.
struct ImportOutcome {
  ImportResult result = ImportResult::Failed;
  ExitCode interruption = ExitCode::Interrupted;  ///< the signal's exit code, if the result is Interrupted
  std::int32_t errorNumber = 0;
  std::string errorDescription;
  std::string errorLine;            ///< the failure as printed on standard error; empty if there is none
  std::vector<ImportEvent> events;  ///< in the order in which they were raised
  std::vector<plan_file::TableChange>
      tables;              ///< all tables of the plan, including unchanged ones; empty after a failure
  ImportReport report;     ///< what could not be read and what was left out
  std::string backupFile;  ///< the plan's previous version; empty if the plan was not written
  std::int64_t elapsedMilliseconds = 0;
};

/// Returns a result as one word, such as "imported".
std::string_view ResultWord(ImportResult result) noexcept;

ExitCode ExitCodeOf(const ImportOutcome& outcome) noexcept;
ImportResult ResultOf(ExitCode code) noexcept;

}  // namespace krnqb::cli
