#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "plan_file/content.h"

namespace krnqb::plan_file {

/// The formula of a month in a planned row: an imported amount, grown by the rate in column B of a row.
struct GrowthFormula {
  double amount = 0;
  std::int64_t rateRow = 0;  ///< row of the sheet, as written: "B14" is 14

  bool operator==(const GrowthFormula&) const = default;
};

/// Parses a formula of an import: "=2600* (1 + B14)" or, for sales, "=1820 * (1 + B9)". Returns nothing for
/// any other text, also if it means the same.
std::optional<GrowthFormula> ParseGrowthFormula(std::string_view cell);

/// Returns the amount of a growth formula in row `row` (an index from 0) of a planned block: the formula's
/// amount times 1 plus the rate in that row's column B, where an empty rate counts as 0. Returns nothing if
/// the cell is not a growth formula, refers to another row (the block's first row is its "startrow"; if that
/// is not a row of a sheet, every formula does), or the rate is not a number.
std::optional<double> GrownAmount(const PlanBlock& block, std::size_t row, std::string_view cell);

}  // namespace krnqb::plan_file
