#pragma once

#include "profit_and_loss/report.h"
#include "profit_and_loss/statement.h"

namespace krnqb::profit_and_loss {

/// Interprets a summary report. Throws Error 13 "PLACE: ..." if a row or an amount cannot be understood, or
/// if two rows are of the same account.
ProfitAndLoss ReadSummary(const CapturedReport& report);

}  // namespace krnqb::profit_and_loss
