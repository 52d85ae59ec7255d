#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "plan_file/views/amounts.h"
#include "spreadsheet/plan_sheets.h"
#include "spreadsheet/sheet.h"
#include "support/number_text.h"

namespace krnqb::spreadsheet::tests {

inline plan_file::PlanRow Planned(const std::string& name, const std::string& rate,
                                  const std::string& month) {
  plan_file::PlanRow row{name, rate};
  row.insert(row.end(), plan_file::monthsOfAYear, month);
  return row;
}

inline plan_file::PlanRow Actual(const std::string& name, const std::string& month) {
  plan_file::PlanRow row{name};
  row.insert(row.end(), plan_file::monthsOfAYear, month);
  return row;
}

/// Returns the sheets of a plan of 2003 with one planned and one actual table.
inline PlanSheets SheetsOfBlocks(std::vector<plan_file::PlanBlock> planned,
                                 std::vector<plan_file::PlanBlock> actual = {}) {
  return SheetsOf("year.kpf",
                  {{"20000000000000000000000000000400", std::move(planned)},
                   {"21000000000000000000000000000400", std::move(actual)}},
                  QBKRN_ALD, YearMonth{2003, 1});
}

/// Returns the cell in a place (counted from 0) of a sheet, or null.
inline const SheetCell* CellAt(const Sheet& sheet, std::uint32_t row, std::uint16_t column) {
  for (const SheetCell& cell : sheet.cells) {
    if (cell.row == row && cell.column == column) return &cell;
  }
  return nullptr;
}

/// Returns the text, the formula or the number of a cell as a text; "" if it is empty.
inline std::string ContentAt(const Sheet& sheet, std::uint32_t row, std::uint16_t column) {
  const SheetCell* cell = CellAt(sheet, row, column);
  if (cell == nullptr) return {};
  if (const auto* text = std::get_if<std::string>(&cell->content)) return *text;
  if (const auto* formula = std::get_if<SheetFormula>(&cell->content)) return formula->text;
  return GeneralNumberText(std::get<double>(cell->content));
}

/// Returns what the formula in a place amounts to.
inline double ValueAt(const Sheet& sheet, std::uint32_t row, std::uint16_t column) {
  return std::get<SheetFormula>(CellAt(sheet, row, column)->content).value;
}

}  // namespace krnqb::spreadsheet::tests
