#pragma once

#include <cstdint>
#include <ctime>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace krnqb::spreadsheet {

/// How a cell looks.
enum class CellStyle : std::uint8_t {
  Plain,
  Title,
  Note,
  Heading,
  TextHeading,    ///< above texts
  ActualHeading,  ///< above the actual months beside the planned ones
  Name,
  TotalName,
  Amount,  ///< two decimals, thousands
  TotalAmount,
  Rate,  ///< per cent
  TotalRate,
  Number  ///< as many decimals as it has
};

/// A formula, which begins with "=", and what it amounts to.
struct SheetFormula {
  std::string text;
  double value = 0;

  bool operator==(const SheetFormula&) const = default;
};

struct SheetCell {
  std::uint32_t row = 0;  ///< from 0, as the column
  std::uint16_t column = 0;
  std::variant<std::string, double, SheetFormula> content;
  CellStyle style = CellStyle::Plain;

  bool operator==(const SheetCell&) const = default;
};

/// Cells of one row of a sheet.
struct CellRange {
  std::uint32_t row = 0;
  std::uint16_t first = 0;
  std::uint16_t last = 0;
};

struct ChartSeries {
  std::string name;
  CellRange values;
  std::uint32_t color = 0;  ///< 0xRRGGBB
};

/// Columns side by side, one for each series and month.
struct ColumnChart {
  std::string title;
  CellRange categories;
  std::vector<ChartSeries> series;
  std::uint32_t row = 0;  ///< of its upper left corner
  std::uint16_t column = 0;
  std::uint16_t lastColumn = 0;  ///< which it covers too
};

struct Sheet {
  std::string name;
  std::vector<SheetCell> cells;      ///< no two in one place
  std::vector<double> columnWidths;  ///< in characters, from the first column
  std::uint32_t frozenRows = 0;      ///< that stay in sight, and are repeated on each page
  std::uint16_t frozenColumns = 0;
  std::pair<std::uint32_t, std::uint32_t> hiddenRows{0, 0};  ///< from the first to before the second
  std::vector<ColumnChart> charts;
  std::uint16_t pageBreak = 0;  ///< a new page begins before this column; 0: all columns are on one page

  // Add a cell; row and column are counted from 0.
  void Add(std::uint32_t row, std::size_t column, std::string text, CellStyle style);
  void Add(std::uint32_t row, std::size_t column, double number, CellStyle style);
  void Add(std::uint32_t row, std::size_t column, SheetFormula formula, CellStyle style);

 private:
  SheetCell& NewCell(std::uint32_t row, std::size_t column, CellStyle style);
};

struct Workbook {
  std::string title;
  std::time_t created = 1;  ///< seconds from 1970, at least 1
  std::vector<Sheet> sheets;
};

}  // namespace krnqb::spreadsheet
