#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "plan_file/content.h"

namespace krnqb::plan_file {

/// What the cells of a block's rows are, after the name.
enum class BlockKind : std::uint8_t {
  Planned,          ///< a growth rate, then twelve months
  Actual,           ///< twelve months
  PastPerformance,  ///< past years, or past years and months
  Other             ///< anything else, such as rates or assumptions
};

BlockKind KindOfBlock(std::string_view blockId) noexcept;

/// The column of the first amount in a block's rows, counted from 0.
std::size_t FirstAmountColumn(BlockKind kind) noexcept;

inline constexpr std::size_t monthsOfAYear = 12;

/// Amounts of twelve months.
struct YearAmounts {
  std::array<double, monthsOfAYear> months{};

  double Sum() const noexcept;
  YearAmounts& operator+=(const YearAmounts& other) noexcept;
  YearAmounts& operator-=(const YearAmounts& other) noexcept;
  bool operator==(const YearAmounts&) const = default;
};

/// Returns the amount of a cell: its number, or in a planned block the result of a growth formula that refers
/// to its own row.
/// Returns nothing for an empty cell, a text, a formula of another kind, and a cell that does not exist.
std::optional<double> CellAmount(const PlanBlock& block, std::size_t row, std::size_t column);

/// Returns the months of a row of a planned or actual block. A cell without an amount counts as 0.
YearAmounts RowAmounts(const PlanBlock& block, std::size_t row);

/// Returns whether a month of the row is neither empty nor an amount, so that `RowAmounts` lacks it.
bool HasUnreadMonth(const PlanBlock& block, std::size_t row);

}  // namespace krnqb::plan_file
