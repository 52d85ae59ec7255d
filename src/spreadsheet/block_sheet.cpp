#include "spreadsheet/block_sheet.h"

#include <fmt/format.h>

#include <algorithm>

#include "plan_file/headings.h"
#include "plan_file/views/amounts.h"
#include "plan_file/views/figures.h"
#include "spreadsheet/cell_text.h"
#include "support/display_width.h"
#include "support/money_text.h"
#include "support/number_text.h"

namespace krnqb::spreadsheet {
namespace {

using plan_file::BlockKind;
using plan_file::monthsOfAYear;

constexpr std::string_view growthEnd = "_annual_growth";

// How the numbers of a column look.
CellStyle NumberStyle(const plan_file::PlanBlock& block, std::size_t column, bool total) {
  const BlockKind kind = plan_file::KindOfBlock(block.id);
  const bool rate = kind == BlockKind::Planned ? column < plan_file::FirstAmountColumn(kind)
                                               : block.id.ends_with(growthEnd);
  if (rate) return total ? CellStyle::TotalRate : CellStyle::Rate;
  if (kind == BlockKind::Other) return CellStyle::Number;
  return total ? CellStyle::TotalAmount : CellStyle::Amount;
}

class Layout {
 public:
  Layout(const PlanSheets& sheets, std::size_t index) : sheets_(sheets), shown_(sheets.blocks[index]) {}

  Sheet Result() {
    sheet_.name = shown_.sheetName;
    AddTitle();
    AddHeadings();
    for (std::size_t row = 0; row < shown_.cells.RowCount(); ++row) AddRow(row);
    if (shown_.cells.RowCount() == 0) sheet_.Add(shown_.Row(0), 0, "(no rows)", CellStyle::Note);
    const bool headingsAbove = shown_.HeadingRow() < shown_.Row(0);
    sheet_.frozenRows = headingsAbove ? shown_.Row(0) : 0;
    sheet_.frozenColumns = 1;
    if (shown_.actual) sheet_.pageBreak = static_cast<std::uint16_t>(ActualColumn());
    HideEmptyRows();
    sheet_.columnWidths = WidthsFor(sheet_);
    FitTitle();
    return std::move(sheet_);
  }

 private:
  // The title is on every page of the sheet that has its first column, but nothing beside it.
  void FitTitle() {
    constexpr double widthOfBold = 1.4;
    if (sheet_.pageBreak == 0) return;
    double& width = sheet_.columnWidths.at(0);
    width = std::max(width, widthOfBold * static_cast<double>(DisplayWidth(shown_.sheetName)));
  }

  // The sum of the year is right of the months, the actual months with theirs are right of a gap.
  std::size_t YearColumn() const noexcept { return shown_.cells.Width(); }
  std::size_t ActualColumn() const noexcept { return shown_.cells.Width() + 2; }

  void AddTitle() {
    constexpr std::uint32_t leastRows = 2;
    if (shown_.HeadingRow() == 0 || shown_.Row(0) < leastRows) return;
    sheet_.Add(0, 0, shown_.sheetName, CellStyle::Title);
    if (shown_.HeadingRow() < 2) return;
    const std::string table = CellText(plan_file::TableTitle(shown_.tableId));
    if (table != shown_.sheetName) sheet_.Add(1, 0, table, CellStyle::Note);
  }

  void AddHeadings() {
    const std::uint32_t row = shown_.HeadingRow();
    sheet_.Add(row, 0, "Name", CellStyle::TextHeading);
    for (std::size_t column = 1; column < shown_.cells.Width(); ++column) {
      const bool known = column <= shown_.headings.size();
      sheet_.Add(row, column,
                 known ? shown_.headings[column - 1] : fmt::format("Column {}", ColumnName(column)),
                 CellStyle::Heading);
    }
    if (shown_.months == 0) return;
    sheet_.Add(row, YearColumn(), "Year", CellStyle::Heading);
    if (!shown_.actual) return;
    const BlockSheet& actual = sheets_.blocks[*shown_.actual];
    for (std::size_t month = 0; month < monthsOfAYear; ++month) {
      const std::size_t at = actual.months - 1 + month;
      const std::string heading =
          at < actual.headings.size() ? actual.headings[at] : fmt::format("month {}", month + 1);
      sheet_.Add(row, ActualColumn() + month, fmt::format("Actual {}", heading), CellStyle::ActualHeading);
    }
    sheet_.Add(row, ActualColumn() + monthsOfAYear, "Actual year", CellStyle::ActualHeading);
  }

  void AddRow(std::size_t index) {
    const std::uint32_t row = shown_.Row(index);
    const bool total = shown_.months > 0 && plan_file::IsTotalRow(shown_.block, index);
    for (std::size_t column = 0; column < shown_.cells.Width(); ++column) {
      AddCell(row, column, shown_.cells.At(index, column), total);
    }
    if (shown_.months == 0) return;
    AddYear(row, YearColumn(), shown_.months, total, shown_.cells, index, shown_.months);
    if (shown_.actual) AddActualMonths(index, total);
  }

  void AddCell(std::uint32_t row, std::size_t column, const BlockCell& cell, bool total) {
    const CellStyle number = NumberStyle(shown_.block, column, total);
    switch (cell.kind) {
      case BlockCell::Kind::Empty:
        break;
      case BlockCell::Kind::Text:
        sheet_.Add(row, column, CellText(cell.text),
                   column > 0 ? CellStyle::Plain
                   : total    ? CellStyle::TotalName
                              : CellStyle::Name);
        break;
      case BlockCell::Kind::Number:
        sheet_.Add(row, column, cell.number, number);
        break;
      case BlockCell::Kind::Formula:
        sheet_.Add(row, column, SheetFormula{cell.text, cell.number}, number);
        break;
    }
  }

  // Adds the sum of twelve cells of the sheet, the first of which is in `first`; they show cells of a block
  // from the column `month`. A row without amounts has no sum.
  void AddYear(std::uint32_t row, std::size_t column, std::size_t first, bool total, const BlockCells& cells,
               std::size_t index, std::size_t month) {
    double sum = 0;
    bool any = false;
    for (std::size_t place = month; place < month + monthsOfAYear; ++place) {
      const BlockCell& cell = cells.At(index, place);
      any = any || cell.HasNumber();
      if (cell.HasNumber()) sum += cell.number;
    }
    if (!any) return;
    const std::string formula =
        fmt::format("=SUM({}:{})", CellName(row, first), CellName(row, first + monthsOfAYear - 1));
    sheet_.Add(row, column, SheetFormula{formula, sum}, total ? CellStyle::TotalAmount : CellStyle::Amount);
  }

  void AddActualMonths(std::size_t index, bool total) {
    const BlockSheet& actual = sheets_.blocks[*shown_.actual];
    const std::uint32_t row = shown_.Row(index);
    for (std::size_t month = 0; month < monthsOfAYear; ++month) {
      const BlockCell& cell = actual.cells.At(index, actual.months + month);
      if (cell.HasNumber()) {
        const std::string source =
            '=' + ReferenceTo(actual.sheetName, actual.Row(index), actual.months + month);
        sheet_.Add(row, ActualColumn() + month, SheetFormula{source, cell.number},
                   total ? CellStyle::TotalAmount : CellStyle::Amount);
      } else if (cell.kind == BlockCell::Kind::Text) {
        sheet_.Add(row, ActualColumn() + month, CellText(cell.text), CellStyle::Plain);
      }
    }
    AddYear(row, ActualColumn() + monthsOfAYear, ActualColumn(), total, actual.cells, index, actual.months);
  }

  // A block far down in its table would be out of sight below its title.
  void HideEmptyRows() {
    constexpr std::uint32_t shownRows = 3;
    constexpr std::uint32_t mostEmptyRows = 5;
    const std::uint32_t heading = shown_.HeadingRow();
    if (sheet_.frozenRows > 0 && heading > shownRows + mostEmptyRows)
      sheet_.hiddenRows = {shownRows, heading};
  }

  const PlanSheets& sheets_;
  const BlockSheet& shown_;
  Sheet sheet_;
};

std::size_t WidthOf(const SheetCell& cell) {
  constexpr std::size_t rateWidth = 9;
  const double* number = std::get_if<double>(&cell.content);
  const SheetFormula* formula = std::get_if<SheetFormula>(&cell.content);
  if (number == nullptr && formula == nullptr) return DisplayWidth(std::get<std::string>(cell.content));
  const double value = number != nullptr ? *number : formula->value;
  if (cell.style == CellStyle::Rate || cell.style == CellStyle::TotalRate) return rateWidth;
  if (cell.style == CellStyle::Number) return GeneralNumberText(value).size();
  return MoneyText(value).size();
}

}  // namespace

std::string ReferenceTo(std::string_view sheetName, std::uint32_t row, std::size_t column) {
  std::string name;
  for (const char character : sheetName)
    name += character == '\'' ? std::string("''") : std::string(1, character);
  return fmt::format("'{}'!{}", name, CellName(row, column));
}

std::vector<double> WidthsFor(const Sheet& sheet) {
  constexpr std::size_t least = 6;
  constexpr std::size_t most = 48;
  constexpr double margin = 2;
  std::vector<double> widths;
  for (const SheetCell& cell : sheet.cells) {
    if (cell.style == CellStyle::Title || cell.style == CellStyle::Note) continue;  // may run over
    if (widths.size() <= cell.column) widths.resize(cell.column + std::size_t{1}, static_cast<double>(0));
    const auto width = static_cast<double>(std::clamp(WidthOf(cell), least, most));
    widths[cell.column] = std::max(widths[cell.column], width + margin);
  }
  for (double& width : widths) {
    if (width == 0) width = margin;  // a gap
  }
  return widths;
}

Sheet SheetOfBlock(const PlanSheets& sheets, std::size_t index) {
  return Layout(sheets, index).Result();
}

}  // namespace krnqb::spreadsheet
