#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace krnqb::spreadsheet {

/// A cell of a sheet, named as in "B7".
struct CellPlace {
  std::uint32_t row = 1;     ///< from 1
  std::uint32_t column = 0;  ///< from 0, which is A

  bool operator==(const CellPlace&) const = default;
};

/// What a formula finds in a cell that it refers to.
struct FoundCell {
  enum class Kind : std::uint8_t {
    Nothing,  ///< an empty cell: 0 in a calculation, ignored in a range
    Text,     ///< ignored in a range; a calculation with it fails
    Number,
    Unknown  ///< no such cell, or one that cannot be computed: every formula that refers to it fails
  };

  Kind kind = Kind::Unknown;
  double number = 0;
};

using CellSource = std::function<FoundCell(const CellPlace&)>;

/// Computes a formula as spreadsheets do: numbers, cells, + - * /, parentheses, and SUM, AVERAGE, MIN and MAX
/// of cells and ranges. Returns nothing for any other formula, for one that refers to an unknown cell, and
/// for a result that is not a finite number. Of a range, `cells` is asked for two opposite corners first, and
/// for the cells between them only if both are known.
std::optional<double> ComputeFormula(std::string_view formula, const CellSource& cells);

}  // namespace krnqb::spreadsheet
