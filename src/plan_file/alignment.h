#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "plan_file/content.h"

namespace krnqb::plan_file {

/// Returns how many cells differ between two states of a row. A formula that became an empty cell does not
/// count, because the planning program recomputes such cells.
std::size_t CellsChanged(const PlanRow& before, const PlanRow& after) noexcept;

/// Returns, for each row of a block's later state, the index of the same row in its earlier state, or nullopt
/// if the row was added. The indexes increase: rows are added and removed, never moved. A row keeps its name.
/// Rows that share a name (unnamed rows above all) are matched so that the fewest cells change; among equal
/// choices, added rows come last.
///
/// Runs in time proportional to the number of rows. In a long range of rows that share their names, only one
/// place of insertion or removal is considered.
std::vector<std::optional<std::size_t>> MatchRows(const std::vector<PlanRow>& before,
                                                  const std::vector<PlanRow>& after);

}  // namespace krnqb::plan_file
