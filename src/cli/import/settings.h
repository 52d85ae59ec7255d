#pragma once

#include <memory>
#include <string>
#include <vector>

#include "cli/import/options.h"
#include "cli/import/source.h"
#include "krnqb/qb_data_exchange.h"
#include "plan_file/file.h"

namespace krnqb::cli {

/// An import's options with what the plan says where nothing was typed.
struct ImportSettings {
  ImportCommand options;
  QBKRNproduct product = QBKRN_ALD;
  plan_file::PlanStart planStart;
  plan_file::PlanStart importStart;  ///< first of the twelve months
};

/// Throws Failure (wrong usage) for options that no import can be made of, whatever the files hold.
void CheckImportOptions(const ImportCommand& options);

/// Takes product and start from the plan where they were not given. Throws Failure (wrong usage) when neither
/// says.
ImportSettings SettleImport(const ImportCommand& options, const plan_file::PlanFile& plan);

/// Sets the component's options and hands it the plan.
void Configure(QBDataExchange& exchange, const ImportSettings& settings, const ImportSource& source,
               const std::shared_ptr<plan_file::PlanFile>& plan);

/// In one line, without its end, what the import will do.
std::string AnnouncementText(const ImportSettings& settings, const ImportSource& source);

/// What was typed and will have no effect, or less than it seems.
std::vector<std::string> ImportWarnings(const ImportSettings& settings, const ImportSource& source,
                                        const plan_file::PlanFile& plan);

}  // namespace krnqb::cli
