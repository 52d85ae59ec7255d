#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "profit_and_loss/report.h"
#include "profit_and_loss/statement.h"

namespace krnqb::profit_and_loss {

/// The fields of a transaction in a detail report.
enum class DetailField : std::uint8_t { Type, Date, Number, Name, Memo, Account, Amount };

/// Returns the field of a column with this title or type, or nothing for columns without meaning here.
std::optional<DetailField> DetailFieldOf(std::string_view title);

/// Returns whether a column's title says only that it contains amounts: "TOTAL", "Amount".
bool IsTotalTitle(std::string_view title);

/// The columns of a summary report that contain amounts.
struct AmountColumns {
  std::vector<StatementColumn> columns;
  std::vector<std::size_t> positions;  ///< of these columns in the rows
  std::optional<std::size_t> total;    ///< position of the column that adds the others up, if any
};

/// Interprets the columns of a summary report. Throws Error 13 "DOCUMENT: ..." if a column has another title
/// than a time or a total, if two cover the same time, if no column has amounts, or if more than 120 have.
AmountColumns ReadAmountColumns(const CapturedReport& report);

}  // namespace krnqb::profit_and_loss
