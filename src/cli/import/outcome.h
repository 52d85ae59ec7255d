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
  Unchanged,   ///< all read, nothing in the plan had to change
  DryRun,      ///< what would change is known, nothing was written
  Incomplete,  ///< written although something was missing
  Cancelled,   ///< a person closed the dialog without importing
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

/// What came of an import, filled in as it goes.
struct ImportOutcome {
  ImportResult result = ImportResult::Failed;
  std::int32_t errorNumber = 0;
  std::string errorDescription;
  std::string errorLine;            ///< how the failure is told on standard error; empty when there is none
  std::vector<ImportEvent> events;  ///< in the order in which they were raised
  std::vector<plan_file::TableChange>
      tables;              ///< of the plan, unchanged ones included; none unless it was compared
  ImportReport report;     ///< what could not be read and what was left out
  std::string backupFile;  ///< where the plan's previous version is kept, when it was written
  std::int64_t elapsedMilliseconds = 0;
};

/// A result in one word, such as "imported".
std::string_view ResultWord(ImportResult result) noexcept;

ExitCode ExitCodeOf(ImportResult result) noexcept;
ImportResult ResultOf(ExitCode code) noexcept;

}  // namespace krnqb::cli
