#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/import/options.h"
#include "cli/import/progress/phases.h"
#include "cli/import/source.h"
#include "cli/import/summary/figures.h"
#include "cli/import/warning.h"
#include "krnqb/qb_data_exchange.h"
#include "plan_file/file.h"

namespace krnqb::cli {

/// An import's options, completed from the plan.
struct ImportSettings {
  ImportCommand options;
  QBKRNproduct product = QBKRN_ALD;
  YearMonth planStart;
  YearMonth importStart;  ///< first of the twelve months to import
};

/// Throws Failure (WrongUsage) if the options allow no import, whatever the files contain.
void CheckImportOptions(const ImportCommand& options);

/// Returns the settings of an import, with product and start from the plan, or from the options if the plan
/// does not state them. Throws Failure (WrongUsage) if neither does, or if an option contradicts the plan.
ImportSettings SettleImport(const ImportCommand& options, const plan_file::PlanFile& plan);

/// Sets the component's options and its plan.
void Configure(QBDataExchange& exchange, const ImportSettings& settings, const ImportSource& source,
               const std::shared_ptr<plan_file::PlanFile>& plan);

/// Returns what decides which phases the import has.
ImportScope ScopeOf(const ImportSettings& settings, const ImportSource& source);

/// Returns what decides which figures the summary of the import shows. `used` are the component's options
/// after the import, which a dialog may have chosen.
SummaryScope SummaryScopeOf(const ImportOptions& used, const ImportSettings& settings);

/// Returns what the import will do, in one line without a line end.
std::string AnnouncementText(const ImportSettings& settings, const ImportSource& source);

/// Returns a warning for each option that is ignored, or has less effect than it promises.
std::vector<ImportWarning> ImportWarnings(const ImportSettings& settings, const ImportSource& source);

}  // namespace krnqb::cli
