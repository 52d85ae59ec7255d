#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "plan_file/content.h"
#include "spreadsheet/formula.h"

namespace krnqb::spreadsheet {

/// The most rows and columns of a sheet.
inline constexpr std::uint32_t mostRows = 1'048'576;
inline constexpr std::uint32_t mostColumns = 16'384;

/// What a sheet shows in place of a cell of a plan.
struct BlockCell {
  enum class Kind : std::uint8_t {
    Empty,
    Text,    ///< also a formula that cannot be computed from the cells of its own block
    Number,  ///< `number`
    Formula  ///< `text`, which begins with "=" and amounts to `number`
  };

  Kind kind = Kind::Empty;
  std::string text = {};
  double number = 0;

  bool HasNumber() const noexcept { return kind == Kind::Number || kind == Kind::Formula; }
  bool operator==(const BlockCell&) const = default;
};

/// The cells of a plan's block, computed for a sheet in which its first row is the block's "startrow".
///
/// A formula is computed if every cell that it refers to is in the block and can be computed itself. The
/// first cell of a row is its name and always a text. A growth rate and an amount is a number if automation
/// would convert its text to one; elsewhere only a plainly written number is, so that "007" stays a text.
class BlockCells {
 public:
  explicit BlockCells(const plan_file::PlanBlock& block);

  std::size_t RowCount() const noexcept { return rows_.size(); }
  /// Returns the number of cells of the longest row.
  std::size_t Width() const noexcept { return width_; }
  /// Returns the sheet row (from 1) of the first row; nullopt if "startrow" is not a row of a sheet that has
  /// room for all rows below it. Without it no formula is computed.
  std::optional<std::uint32_t> FirstRow() const noexcept { return firstRow_; }
  /// Returns a cell; an empty one if there is no such row or cell.
  const BlockCell& At(std::size_t row, std::size_t column) const noexcept;
  /// Returns whether the cell is a formula of the plan that is shown as a text.
  bool IsUncomputed(std::size_t row, std::size_t column) const noexcept;

 private:
  enum class State : std::uint8_t { New, Started, Done };
  struct Slot {
    BlockCell cell;
    State state = State::Done;
  };

  void Compute(std::size_t row, std::size_t column);
  FoundCell Find(const CellPlace& place);

  std::vector<std::vector<Slot>> rows_;
  std::size_t width_ = 0;
  std::optional<std::uint32_t> firstRow_;
  std::size_t lookUps_ = 0;
  std::size_t depth_ = 0;
};

}  // namespace krnqb::spreadsheet
