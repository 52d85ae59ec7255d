#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace krnqb::cli {

enum class Alignment : std::uint8_t { Left, Right };

/// A table of text for people, each column padded to its widest cell of at most 100 characters.
class TextTable {
 public:
  /// Takes one alignment per column. A row may have fewer cells than columns, but not more. Cells are printed
  /// as `OneLine`.
  explicit TextTable(std::vector<Alignment> alignments) : alignments_(std::move(alignments)) {}

  void AddRow(std::vector<std::string> cells);

  /// Returns the rows, each indented by `indent` and ended by a line end. Columns are two spaces apart;
  /// trailing spaces are removed.
  std::string Text(std::string_view indent = {}) const;

 private:
  std::vector<std::size_t> ColumnWidths() const;

  std::vector<Alignment> alignments_;
  std::vector<std::vector<std::string>> rows_;
};

/// Returns the text on one line: each run of line ends and other control characters (see `IsControl`)
/// becomes one space.
std::string OneLine(std::string_view text);

}  // namespace krnqb::cli
