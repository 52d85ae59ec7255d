#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/console/failure.h"
#include "cli/import/options.h"
#include "cli/import/summary/figures.h"
#include "cli/import/warning.h"
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

/// The company that an import reads.
struct ImportCompany {
  std::string path;              ///< of the company file; empty for a recording
  std::string name;              ///< empty for a recording
  std::string processorVersion;  ///< the qbXML version that its processor answers, such as "1.1"
  std::int16_t majorVersion =
      0;  ///< of the processor: 1 imports from transactions, 2 from reports, others import no amounts
};

/// What an import was asked to do and from what, as far as it was known when the import ended.
struct ImportBasis {
  ImportCommand options;
  // The option, or what the plan states if the option was not given; empty if the plan was not read.
  std::optional<QBKRNproduct> product;
  std::optional<YearMonth> planStart;
  std::optional<YearMonth> importStart;  ///< first of the twelve months to import
  std::optional<ImportCompany> company;  ///< empty if it was not opened
};

/// The outcome of an import, filled in as it runs.
struct ImportOutcome {
  ImportResult result = ImportResult::Failed;
  ExitCode interruption = ExitCode::Interrupted;  ///< the signal's exit code, if the result is Interrupted
  std::int32_t errorNumber = 0;
  std::string errorDescription;
  std::string errorLine;            ///< the failure as printed on standard error; empty without a failure
  std::string remedy;               ///< what to do about the failure: the end of that line
  std::vector<ImportEvent> events;  ///< in the order in which they were raised
  std::vector<plan_file::TableChange>
      tables;              ///< all tables of the plan, including unchanged ones; empty after a failure
  ImportSummary summary;   ///< the changes as figures; empty after a failure
  ImportReport report;     ///< what could not be read and what was left out
  std::string backupFile;  ///< the plan's previous version; empty if the plan was not written
  std::optional<std::int32_t> historyNumber;  ///< of that version in the plan's history, if it was written
  std::optional<ImportBasis> basis;           ///< empty if the command line is invalid
  std::vector<ImportWarning> warnings;        ///< in the order in which they were printed
  std::int64_t elapsedMilliseconds = 0;
};

/// Returns a result as one word, such as "imported".
std::string_view ResultWord(ImportResult result) noexcept;

/// Records a failure in the outcome.
void SetFailure(ImportOutcome& outcome, const Failure& failure);

ExitCode ExitCodeOf(const ImportOutcome& outcome) noexcept;
ImportResult ResultOf(ExitCode code) noexcept;

/// Returns the basis of an import whose command line is valid. Throws Error 91 if it is not.
const ImportBasis& BasisOf(const ImportOutcome& outcome);

}  // namespace krnqb::cli
