#pragma once

#include <string>

#include "cli/reconcile/output.h"
#include "html/fragment.h"

namespace krnqb::cli {

/// Returns a reconciliation as part of a page: whether the plan agrees with the books, the amounts of each
/// account, and what every difference consists of.
html::Fragment ReconciliationParts(const ReconcileResult& result);

/// Returns the page about a reconciliation. `footer` is its last line.
std::string ReconcilePage(const ReconcileResult& result, const std::string& footer);

}  // namespace krnqb::cli
