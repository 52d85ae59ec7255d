#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "html/fragment.h"

namespace krnqb::html {

enum class Alignment : std::uint8_t { Text, Number };

struct Column {
  std::string heading;
  Alignment alignment = Alignment::Number;
};

/// A cell with its content and, for programs that read the page, its exact value ("data-value"; left out if
/// it is empty).
struct Cell {
  Fragment content;
  std::string value = {};
};

enum class RowKind : std::uint8_t {
  Plain,
  Total,   ///< in bold letters, with a line above
  Heading  ///< a heading across the table above the rows that follow it
};

struct Row {
  Cell heading;             ///< the first cell, which names the row
  std::vector<Cell> cells;  ///< of the other columns; fewer leave the last ones empty
  RowKind kind = RowKind::Plain;
  std::string name = {};  ///< for programs ("data-row"); left out if it is empty
};

/// A table. Its first column names the rows.
struct Table {
  std::string caption;          ///< says what the table shows; unique on the page
  std::vector<Column> columns;  ///< the first one is that of the row headings
  std::vector<Row> rows;
  std::string name = {};  ///< for programs ("data-table"); left out if it is empty
};

/// Returns the table in a region that scrolls on its own where the table is wider than the page and that the
/// keyboard reaches. Returns nothing for a table without rows.
Fragment TableRegion(const Table& table);

}  // namespace krnqb::html
