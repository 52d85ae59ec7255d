#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/console/interrupt_watch.h"
#include "profit_and_loss/statement.h"
#include "reconcile/posted_entries.h"

namespace krnqb::cli {

/// Returns what the transactions in QuickBooks' answers post, added up as a company file does, in a company
/// file that exists only meanwhile. Throws Failure if it cannot be written.
reconcile::PostedEntries PostAnswers(const std::vector<std::string>& answers, const YearMonth& start,
                                     reconcile::WorkTable& table, reconcile::LineKeys& keys,
                                     const InterruptWatch& interrupts);

/// Returns the profit and loss in the answers that are reports on it; nullopt if there is none.
std::optional<profit_and_loss::ProfitAndLoss> ReportedBooks(const std::vector<std::string>& answers);

}  // namespace krnqb::cli
