#pragma once

#include <optional>
#include <vector>

#include "cli/console/json_text.h"
#include "plan_file/changes.h"
#include "support/year_month.h"

namespace krnqb::cli {

/// Returns the changed tables as a JSON array: for each its id and title, its rows that were added and
/// removed, and its cells that were changed and cleared, with the text before and after. `start` is the
/// plan's first month, from which the columns are named.
Json ChangesJson(const std::vector<plan_file::TableChange>& tables, std::optional<YearMonth> start);

}  // namespace krnqb::cli
