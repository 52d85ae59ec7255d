#pragma once

#include <string>
#include <vector>

#include "cli/record/options.h"
#include "qbxml/exchange_header.h"

namespace krnqb::cli {

/// Returns the months to record: those that were given, or else the twelve months before the plan. Throws
/// Failure (WrongUsage) unless they are 12 to 120 months that include the twelve months before the plan,
/// which an import reads unless it is given another start.
RecordedSpan SettleSpan(const RecordOptions& options);

/// Returns the first months of all imports of twelve months in the span.
std::vector<YearMonth> ImportStarts(const RecordedSpan& span);

/// Returns the first months of imports that together ask for the transactions of every month in the span and,
/// for past performance, which depends on the year in which an import starts, have each such year.
std::vector<YearMonth> TransactionStarts(const RecordedSpan& span);

/// Returns "January 2001 to December 2002".
std::string MonthsText(const YearMonth& from, const YearMonth& to);

}  // namespace krnqb::cli
