#include "spreadsheet/csv_table.h"

#include <fmt/format.h>

#include <cmath>
#include <map>

#include "files/csv_text.h"
#include "plan_file/views/amounts.h"
#include "support/number_text.h"

namespace krnqb::spreadsheet {
namespace {

using plan_file::BlockKind;

std::string Cents(double amount) {
  constexpr double leastCent = 0.005;
  return std::abs(amount) < leastCent ? "0.00" : fmt::format("{:.2f}", amount);
}

bool IsAmount(CellStyle style) noexcept {
  return style == CellStyle::Amount || style == CellStyle::TotalAmount;
}

std::string BlockText(const BlockSheet& sheet) {
  const BlockKind kind = plan_file::KindOfBlock(sheet.block.id);
  files::CsvLine headings;
  headings.Text("Name");
  for (std::size_t column = 1; column < sheet.cells.Width(); ++column) {
    const bool known = column <= sheet.headings.size();
    headings.Text(known ? sheet.headings[column - 1] : fmt::format("Column {}", column + 1));
  }
  std::string text = headings.Line();
  for (std::size_t row = 0; row < sheet.cells.RowCount(); ++row) {
    files::CsvLine line;
    for (std::size_t column = 0; column < sheet.cells.Width(); ++column) {
      const BlockCell& cell = sheet.cells.At(row, column);
      const bool amount = kind != BlockKind::Other && column >= plan_file::FirstAmountColumn(kind);
      if (cell.HasNumber()) {
        line.Figure(amount ? Cents(cell.number) : PlainNumberText(cell.number));
      } else {
        line.Text(cell.text);
      }
    }
    text += line.Line();
  }
  return text;
}

void AddCell(files::CsvLine& line, const SheetCell& cell) {
  const double* number = std::get_if<double>(&cell.content);
  const SheetFormula* formula = std::get_if<SheetFormula>(&cell.content);
  if (number == nullptr && formula == nullptr) {
    line.Text(std::get<std::string>(cell.content));
  } else {
    const double value = number != nullptr ? *number : formula->value;
    line.Figure(IsAmount(cell.style) ? Cents(value) : PlainNumberText(value));
  }
}

// The cells of a sheet, row by row from the first one that has any.
std::string SheetText(const Sheet& sheet) {
  std::map<std::uint32_t, std::map<std::uint16_t, const SheetCell*>> rows;
  std::uint16_t last = 0;
  for (const SheetCell& cell : sheet.cells) {
    rows[cell.row][cell.column] = &cell;
    last = std::max(last, cell.column);
  }
  std::string text;
  for (const auto& [row, cells] : rows) {
    files::CsvLine line;
    for (std::uint16_t column = 0; column <= last; ++column) {
      const auto cell = cells.find(column);
      if (cell == cells.end()) {
        line.Empty();
      } else {
        AddCell(line, *cell->second);
      }
    }
    text += line.Line();
  }
  return text;
}

// A name that every system accepts for a file.
std::string PlainName(std::string_view sheetName) {
  std::string name;
  for (const char character : sheetName) {
    const bool upper = character >= 'A' && character <= 'Z';
    const bool kept =
        upper || (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9');
    if (kept) {
      name += upper ? static_cast<char>(character - 'A' + 'a') : character;
    } else if (!name.empty() && name.back() != '-') {
      name += '-';
    }
  }
  while (name.ends_with('-')) name.pop_back();
  return name.empty() ? "block" : name;
}

}  // namespace

std::vector<CsvTable> CsvTablesOf(const PlanSheets& sheets, const Sheet& summary, const Sheet& warnings) {
  std::vector<CsvTable> tables{{"summary.csv", SheetText(summary)}, {"warnings.csv", SheetText(warnings)}};
  for (std::size_t index = 0; index < sheets.blocks.size(); ++index) {
    const BlockSheet& sheet = sheets.blocks[index];
    tables.push_back({fmt::format("{:02}-{}.csv", index + 1, PlainName(sheet.sheetName)), BlockText(sheet)});
  }
  return tables;
}

}  // namespace krnqb::spreadsheet
