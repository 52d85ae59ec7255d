#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "company/reports/accounts.h"
#include "company/reports/layout.h"

namespace krnqb::company {

/// Amounts in hundredths, one for each column.
using RowAmounts = std::vector<std::int64_t>;

enum class ReportRowKind { Text, Data, Subtotal, Total };

struct ReportRow {
  ReportRowKind kind = ReportRowKind::Text;
  std::string label;
  std::optional<std::string> account;  ///< full name of the account whose row it is
  RowAmounts amounts;                  ///< empty for a text row
};

/// The rows of a report over the accounts of one type, from the outermost heading to the report's total; none
/// when no account has anything to show. `ownAmounts` has, for each account, what it shows of its own, or
/// nothing; all have `columns` amounts.
///
/// An account without sub-accounts is one row. One that has some is a heading, the rows of those below it, a
/// row "X - Other" when it shows something of its own, and its subtotal; it is left out when neither it nor
/// any below it shows anything.
std::vector<ReportRow> BuildReportRows(const ReportLayout& layout, const ReportAccounts& accounts,
                                       const std::vector<std::optional<RowAmounts>>& ownAmounts,
                                       std::size_t columns);

}  // namespace krnqb::company
