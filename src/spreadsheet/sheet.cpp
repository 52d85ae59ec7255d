#include "spreadsheet/sheet.h"

namespace krnqb::spreadsheet {

SheetCell& Sheet::NewCell(std::uint32_t row, std::size_t column, CellStyle style) {
  SheetCell& cell = cells.emplace_back();
  cell.row = row;
  cell.column = static_cast<std::uint16_t>(column);
  cell.style = style;
  return cell;
}

void Sheet::Add(std::uint32_t row, std::size_t column, std::string text, CellStyle style) {
  NewCell(row, column, style).content = std::move(text);
}

void Sheet::Add(std::uint32_t row, std::size_t column, double number, CellStyle style) {
  NewCell(row, column, style).content = number;
}

void Sheet::Add(std::uint32_t row, std::size_t column, SheetFormula formula, CellStyle style) {
  NewCell(row, column, style).content = std::move(formula);
}

}  // namespace krnqb::spreadsheet
