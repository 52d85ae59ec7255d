#pragma once

#include <optional>
#include <vector>

#include "html/fragment.h"
#include "plan_file/changes.h"
#include "support/year_month.h"

namespace krnqb::cli {

/// Returns every changed cell and row of a plan's tables, each table to be opened; of a table with more than
/// 1,000 changed rows only the first ones. `start` is the plan's start. Empty if nothing has changed.
html::Fragment EveryChange(const std::vector<plan_file::TableChange>& tables, std::optional<YearMonth> start);

}  // namespace krnqb::cli
