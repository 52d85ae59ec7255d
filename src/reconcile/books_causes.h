#pragma once

#include <vector>

#include "profit_and_loss/statement.h"
#include "reconcile/posted_entries.h"
#include "reconcile/work_table.h"
#include "support/year_month.h"

namespace krnqb::reconcile {

/// How finely the books' amounts are known.
enum class BooksPeriods : std::uint8_t {
  Months,
  Year  ///< the amounts of a whole year are in the first month of the work table
};

/// Takes the sums of the loaded transactions as the books.
void TakeLedgerAsBooks(WorkTable& table);

/// Adds the amounts of a profit and loss to the work table, as the books of the twelve months from `start`.
/// If `posted` is not null, explains how the loaded transactions differ from them: with a detail report
/// transaction by transaction, otherwise by the sums. An account without a section is looked for among the
/// accounts of the table. Throws Error 13 if the statement does not cover the twelve months, or names an
/// account without a section that is in no group or in several ones.
BooksPeriods AddBooks(WorkTable& table, const profit_and_loss::ProfitAndLoss& statement,
                      const YearMonth& start, const std::vector<PostedEntry>* posted);

}  // namespace krnqb::reconcile
