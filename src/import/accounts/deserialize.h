#pragma once

#include <optional>
#include <string>

#include "import/context.h"
#include "plan/tables_document.h"

namespace krnqb {

/// Merges an account list (a response's text or any element of a response) into the plan tables that it
/// changes and returns these tables. The requestID of the whole document's first "AccountQueryRs" selects the
/// tables: 1 sales, 2 costs, 4 expenses, any other none. A failure is reported to the observer; the tables
/// changed before it are returned, or nothing if there are none. Also returns nothing if `serialData` is
/// Nothing or its text is not well-formed.
std::optional<TablesDocument> ChangedTables(ImportContext& context, const Variant& serialData);

/// Returns the text of `ChangedTables`, empty if there are none.
std::string KRNDeserialize(ImportContext& context, const Variant& serialData);

}  // namespace krnqb
