#pragma once

#include <string>

#include "import/context.h"

namespace krnqb {

/// Turns an account list (an answer's text, or an element) into the "<tables>" document of the plan tables
/// that it changes. The first "AccountQueryRs" counts; its requestID chooses the tables: 1 sales, 2 costs, 4
/// expenses, any other none. A failure in the middle is told to the observer and leaves the records so far,
/// or the empty text when there are none; nothing, or a text that is no document, gives the empty text.
std::string KRNDeserialize(ImportContext& context, const Variant& serialData);

}  // namespace krnqb
