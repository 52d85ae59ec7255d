#pragma once

#include "profit_and_loss/report.h"
#include "profit_and_loss/statement.h"

namespace krnqb::profit_and_loss {

/// Interprets a detail report: its transactions, and their sums by account and month. Throws Error 13
/// "PLACE: ..." if a row, a date or an amount cannot be understood.
ProfitAndLoss ReadDetail(const CapturedReport& report);

}  // namespace krnqb::profit_and_loss
