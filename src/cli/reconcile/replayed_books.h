#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/console/interrupt_watch.h"
#include "profit_and_loss/statement.h"
#include "reconcile/posted_entries.h"

namespace krnqb::cli {

/// Returns what the transactions in QuickBooks' answers post. They are added up by a temporary company file.
/// Throws Failure if it cannot be written.
reconcile::PostedEntries PostAnswers(const std::vector<std::string>& answers, const YearMonth& start,
                                     reconcile::WorkTable& table, reconcile::LineKeys& keys,
                                     const InterruptWatch& interrupts);

/// Returns the profit and loss that the answers report; nullopt if none of them is such a report.
std::optional<profit_and_loss::ProfitAndLoss> ReportedBooks(const std::vector<std::string>& answers);

}  // namespace krnqb::cli
