#pragma once

#include <string>

#include "krnqb/enumerations.h"
#include "plan_file/attributes.h"

namespace krnqb::plan_file {

/// Returns the text of a new plan with the product's tables, without any entries. Every block has an example
/// row, from which new rows are cloned, and closing rows that stay last: a "Depreciation" row and the totals
/// in the expenses of `ald` and `cor`, other expenses and the totals in those of `bri`, the totals elsewhere.
/// Planned rows have 14 cells (name, rate, 12 months), actual rows 13; rows of past performance 4 (name, 3
/// years; `ald`) or 15 (name, 2 years, 12 months; `cor`). The blocks of a table follow one another down its
/// sheet. `product` is one of the three, `start` a month.
std::string NewPlanText(QBKRNproduct product, YearMonth start);

}  // namespace krnqb::plan_file
