#pragma once

#include <vector>

#include "cli/import/settings.h"
#include "krnqb/import_options.h"
#include "plan_file/changes.h"
#include "plan_file/content.h"
#include "plan_file/history/entry.h"

namespace krnqb::cli {

/// Returns what the plan's history says about an import. `imported` are the options that it ran with, which
/// the user may have chosen in a dialog. The changes are not counted yet.
plan_file::ImportFacts HistoryFacts(const ImportSettings& settings, const ImportOptions& imported);

/// Adds the amounts of a plan, as the import left it, in the rows that an import can write.
void KeepRows(plan_file::ImportFacts& facts, const plan_file::PlanContent& written, QBKRNproduct product,
              QBKRN_BalancesImport balances);

/// Counts the changes of all tables.
void CountChanges(plan_file::ImportFacts& facts, const std::vector<plan_file::TableChange>& tables) noexcept;

}  // namespace krnqb::cli
