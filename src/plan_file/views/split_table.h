#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace krnqb::plan_file {

/// A line of a table: the row's name and its cells, on one line each. A line with only the name is above
/// others, as a heading does.
struct TableLine {
  std::vector<std::string> texts;
  bool inEveryPart = false;  ///< repeated in each part of a split table, even if it has no cell there
};

/// How a table is laid out.
struct TableLayout {
  std::size_t width = 80;  ///< longest line, in columns of a terminal; at least 20 are used
  std::size_t gap = 2;     ///< spaces between columns
  std::string_view indent = "  ";
  std::size_t columnsBefore = 0;  ///< columns of cells before the year's, such as a growth rate
  std::size_t columnsAfter = 0;   ///< columns after the year's, such as a sum
};

/// Returns into how many parts `SplitTableText` splits the table.
std::size_t PartCount(const std::vector<TableLine>& lines, const TableLayout& layout);

/// Returns a table with its names to the left and its cells to the right of their columns, no line of which
/// is longer than the layout's width. A table that is too wide is split into parts, one below the other with
/// an empty line between, each with the names: a year of twelve columns into halves, thirds, quarters or
/// less, other columns as many to a part as fit. Names longer than half a line are shortened with "…", and so
/// are cells that do not fit into a line of their own.
std::string SplitTableText(const std::vector<TableLine>& lines, const TableLayout& layout);

}  // namespace krnqb::plan_file
