#pragma once

#include <vector>

#include "profit_and_loss/statement.h"

namespace krnqb::profit_and_loss {

/// Returns one profit and loss from several, such as one for each month, for each kind of account, or a
/// summary and its detail. An account and time that two of them contain must have the same amount in both.
/// Throws Error 13 if it has not, if columns overlap, or if the companies or the bases differ, and Error 6 if
/// a sum is out of range. An empty list
/// yields an empty statement.
ProfitAndLoss MergeStatements(std::vector<ProfitAndLoss> statements);

}  // namespace krnqb::profit_and_loss
