#pragma once

#include <string_view>

#include "profit_and_loss/statement.h"

namespace krnqb::profit_and_loss {

/// Reads a profit and loss from the bytes of a document, whose content decides how it is read: QuickBooks'
/// answers to requests for summary or detail reports, or CSV. Amounts of an account are those booked to it
/// itself. Totals that do not agree are findings. Throws Error 13 "DOCUMENT: line N: ..." if anything cannot
/// be understood, and Error 6 "DOCUMENT: ..." if a sum is out of range.
ProfitAndLoss ReadProfitAndLoss(std::string_view documentName, std::string_view bytes);

}  // namespace krnqb::profit_and_loss
