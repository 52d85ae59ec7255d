#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace krnqb::cli {

enum class Alignment : std::uint8_t { Left, Right };

/// Rows of texts laid out in columns of equal width, for a person to read.
class TextTable {
 public:
  /// One alignment per column; rows may have fewer cells than there are columns, not more. Cells are shown as
  /// `OneLine`.
  explicit TextTable(std::vector<Alignment> alignments) : alignments_(std::move(alignments)) {}

  void AddRow(std::vector<std::string> cells);

  /// The lines, each behind `indent` and with a line end; columns stand two blanks apart, and no line ends in
  /// blanks.
  std::string Text(std::string_view indent = {}) const;

 private:
  std::vector<std::size_t> ColumnWidths() const;

  std::vector<Alignment> alignments_;
  std::vector<std::vector<std::string>> rows_;
};

/// A text on one line: line ends and other control characters, one or several in a row, become a blank.
std::string OneLine(std::string_view text);

}  // namespace krnqb::cli
