#include "spreadsheet/plan_sheets.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <utility>

#include "krnqb/error.h"
#include "plan_file/headings.h"
#include "plan_file/views/amounts.h"
#include "plan_file/views/planned_names.h"
#include "spreadsheet/cell_text.h"
#include "spreadsheet/sheet_names.h"
#include "support/path_text.h"

namespace krnqb::spreadsheet {
namespace {

using plan_file::BlockKind;
using plan_file::monthsOfAYear;

constexpr std::uint32_t usualFirstRow = 5;  // of a block whose own is unknown
constexpr std::size_t mostSheets = 10'000;
constexpr std::size_t columnsBeside = 2 * monthsOfAYear;  // the actual months, sums and gaps need fewer

std::string LowerFirst(std::string_view title) {
  std::string text(title);
  if (!text.empty() && text[0] >= 'A' && text[0] <= 'Z') text[0] = static_cast<char>(text[0] - 'A' + 'a');
  return text;
}

std::string WantedName(const plan_file::PlanBlock& block) {
  const std::string_view title = plan_file::BlockTitle(block.id);
  switch (plan_file::KindOfBlock(block.id)) {
    case BlockKind::Planned:
      return title == block.id ? std::string(title) : fmt::format("Planned {}", LowerFirst(title));
    case BlockKind::Actual:
      return title == block.id ? std::string(title) : fmt::format("Actual {}", LowerFirst(title));
    case BlockKind::PastPerformance:
      return title == block.id ? std::string(title) : fmt::format("Past {}", LowerFirst(title));
    case BlockKind::Other:
      break;
  }
  return std::string(title);
}

// Of blocks with months, the column in which they begin.
std::size_t MonthsColumn(const plan_file::PlanBlock& block, std::size_t width) {
  const BlockKind kind = plan_file::KindOfBlock(block.id);
  const std::size_t first = plan_file::FirstAmountColumn(kind);
  const bool monthly = kind == BlockKind::Planned || kind == BlockKind::Actual;
  return monthly && width >= first + monthsOfAYear ? first : 0;
}

void RequireRoom(const plan_file::PlanBlock& block, std::size_t width) {
  if (block.rows.size() > mostRows - usualFirstRow || width + columnsBeside > mostColumns) {
    throw Error(
        error_number::invalidProcedureCall,
        fmt::format("block \"{}\" has {} rows and {} columns; a sheet has {} and {}; use krnqb plan show "
                    "--cells instead",
                    CellText(block.id), block.rows.size(), width, mostRows, mostColumns));
  }
}

// "C9" or "C9 to N9"; a row's cells are neighbours as a rule.
std::string CellsText(std::uint32_t row, std::size_t first, std::size_t last) {
  return first == last ? CellName(row, first)
                       : fmt::format("{} to {}", CellName(row, first), CellName(row, last));
}

void WarnOfUncomputedFormulas(const BlockSheet& sheet, std::vector<SheetWarning>& warnings) {
  for (std::size_t row = 0; row < sheet.cells.RowCount(); ++row) {
    std::optional<std::size_t> first;
    std::size_t last = 0;
    for (std::size_t column = 0; column < sheet.cells.Width(); ++column) {
      if (!sheet.cells.IsUncomputed(row, column)) continue;
      if (!first) first = column;
      last = column;
    }
    if (!first) continue;
    warnings.push_back(
        {fmt::format("{}, {}", sheet.sheetName, CellsText(sheet.Row(row), *first, last)),
         fmt::format(
             "shown as text, since it refers to other blocks, divides by zero or uses what is not computed "
             "here: {}",
             sheet.cells.At(row, *first).text)});
  }
}

void WarnOfLongTexts(const BlockSheet& sheet, std::vector<SheetWarning>& warnings) {
  for (std::size_t row = 0; row < sheet.cells.RowCount(); ++row) {
    for (std::size_t column = 0; column < sheet.cells.Width(); ++column) {
      const BlockCell& cell = sheet.cells.At(row, column);
      if (cell.kind != BlockCell::Kind::Text || FitsCell(cell.text)) continue;
      warnings.push_back({fmt::format("{}, {}", sheet.sheetName, CellName(sheet.Row(row), column)),
                          "shortened, since a cell holds 32,767 characters"});
    }
  }
}

// Ties each planned block to the first block of its actual amounts.
void FindActualSheets(PlanSheets& sheets) {
  std::map<std::string, std::size_t> firstOfId;
  for (std::size_t index = 0; index < sheets.blocks.size(); ++index) {
    firstOfId.try_emplace(sheets.blocks[index].block.id, index);
  }
  for (const auto& [id, index] : firstOfId) {
    BlockSheet& sheet = sheets.blocks[index];
    if (plan_file::KindOfBlock(id) != BlockKind::Planned || sheet.months == 0) continue;
    const auto actual = firstOfId.find(id + "_actual");
    if (actual == firstOfId.end() || sheets.blocks[actual->second].months == 0) continue;
    sheet.actual = actual->second;
    const std::size_t planned = sheet.cells.RowCount();
    const std::size_t twin = sheets.blocks[actual->second].cells.RowCount();
    if (planned == twin) continue;
    sheets.warnings.push_back(
        {sheet.sheetName,
         fmt::format("has {} rows and {} has {}: actual amounts may be beside the wrong planned ones",
                     planned, sheets.blocks[actual->second].sheetName, twin)});
  }
}

}  // namespace

std::uint32_t BlockSheet::Row(std::size_t index) const noexcept {
  return cells.FirstRow().value_or(usualFirstRow) - 1 + static_cast<std::uint32_t>(index);
}

std::uint32_t BlockSheet::HeadingRow() const noexcept {
  return Row(0) == 0 ? Row(cells.RowCount()) + 1 : Row(0) - 1;
}

PlanSheets SheetsOf(std::string planName, plan_file::PlanContent content, std::optional<QBKRNproduct> product,
                    std::optional<YearMonth> start) {
  plan_file::NameRowsAfterPlanned(content);
  PlanSheets sheets{.planName = std::move(planName),
                    .content = std::move(content),
                    .product = product,
                    .start = start,
                    .blocks = {},
                    .warnings = {}};
  SheetNames names;
  names.Add(summarySheetName);
  names.Add(warningsSheetName);
  for (const plan_file::PlanTableContent& table : sheets.content) {
    if (table.blocks.empty()) {
      sheets.warnings.push_back({plan_file::TableTitle(table.id), "has no blocks, so it has no sheet"});
    }
    for (const plan_file::PlanBlock& block : table.blocks) {
      BlockSheet sheet{names.Add(WantedName(block)), table.id, block, BlockCells(block), 0, {}, {}};
      RequireRoom(block, sheet.cells.Width());
      sheet.months = MonthsColumn(block, sheet.cells.Width());
      sheet.headings = plan_file::ColumnHeadings(block.id, sheet.cells.Width(), start);
      if (!sheet.cells.FirstRow()) {
        sheets.warnings.push_back(
            {sheet.sheetName,
             fmt::format("its startrow \"{}\" is not a row of a sheet: it begins in row {}, and its formulas "
                         "are texts",
                         block.startRow, usualFirstRow)});
      } else {
        WarnOfUncomputedFormulas(sheet, sheets.warnings);
      }
      WarnOfLongTexts(sheet, sheets.warnings);
      sheets.blocks.push_back(std::move(sheet));
    }
  }
  if (sheets.blocks.size() > mostSheets) {
    throw Error(error_number::invalidProcedureCall,
                fmt::format("the plan has {} blocks, and a spreadsheet can show {}; use krnqb plan show "
                            "--cells instead",
                            sheets.blocks.size(), mostSheets));
  }
  FindActualSheets(sheets);
  return sheets;
}

PlanSheets SheetsOf(const plan_file::PlanFile& plan) {
  return SheetsOf(TextOfPath(plan.Path().filename()), plan_file::ReadPlanContent(plan), plan.Product(),
                  plan.Start());
}

}  // namespace krnqb::spreadsheet
