#pragma once

#include <string>

#include "import/context.h"

namespace krnqb {

/// Merges an account list (a response's text or any element of a response) into the plan's tables and returns
/// the "<tables>" document of those that change. Uses the first "AccountQueryRs" in the whole document; its
/// requestID selects the tables: 1 sales, 2 costs, 4 expenses, any other none. An error is reported to the
/// observer and ends the operation, which then returns the tables completed so far. Returns the empty text if
/// there are none, or if `serialData` is empty or cannot be parsed.
std::string KRNDeserialize(ImportContext& context, const Variant& serialData);

}  // namespace krnqb
