#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "plan_file/content.h"

namespace krnqb::plan_file {

/// How many cells differ between two states of a row. A formula that became an empty cell does not count: the
/// planning program computes such cells anew.
std::size_t CellsChanged(const PlanRow& before, const PlanRow& after) noexcept;

/// For each row of a block's later state the index of the same row in its earlier state, or none for a row
/// that was added. The indexes rise: rows are added and removed, never moved. A row keeps its name; among
/// rows of one name (rows without a name above all) those count as the same that leave the fewest cells
/// changed, and of equal choices the one that has the added rows last.
///
/// Takes time proportional to the number of rows, but for a part of many rows that share their names, where
/// rows were added or removed in several places: there only one place is looked for.
std::vector<std::optional<std::size_t>> MatchRows(const std::vector<PlanRow>& before,
                                                  const std::vector<PlanRow>& after);

}  // namespace krnqb::plan_file
