#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "company/reports/accounts.h"
#include "company/reports/layout.h"

namespace krnqb::company {

/// Amounts in hundredths, one per column.
using RowAmounts = std::vector<std::int64_t>;

/// Adds amounts to those of the same columns. Throws Error 6 if a sum exceeds 64 bits.
void AddAmounts(RowAmounts& sums, const RowAmounts& amounts);
/// Subtracts amounts from those of the same columns. Throws Error 6 if a difference exceeds 64 bits.
void SubtractAmounts(RowAmounts& amounts, const RowAmounts& less);
/// Returns the sum of all columns. Throws Error 6 if it exceeds 64 bits.
std::int64_t TotalOf(const RowAmounts& amounts);

enum class ReportRowKind { Text, Data, Subtotal, Total };

struct ReportRow {
  ReportRowKind kind = ReportRowKind::Text;
  std::string label;
  std::optional<std::string> account;  ///< full name of the row's account, if any
  RowAmounts amounts;                  ///< empty for a text row
};

/// Returns the rows of a report on the accounts of one type, from the outermost heading to the report's
/// total; no rows if no account has amounts. `ownAmounts` contains the amounts of each account itself, or
/// nullopt; each has `columns` amounts.
///
/// An account without sub-accounts has one row. A parent account has a heading, the rows of its sub-accounts,
/// a row "X - Other" if it has amounts itself, and a subtotal; it is omitted if neither it nor its
/// sub-accounts have amounts.
std::vector<ReportRow> BuildReportRows(const ReportLayout& layout, const ReportAccounts& accounts,
                                       const std::vector<std::optional<RowAmounts>>& ownAmounts,
                                       std::size_t columns);

}  // namespace krnqb::company
