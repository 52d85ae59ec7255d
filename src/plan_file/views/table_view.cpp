#include "plan_file/views/table_view.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

#include "krnqb/error.h"
#include "plan_file/headings.h"
#include "plan_file/views/amounts.h"
#include "plan_file/views/planned_names.h"
#include "plan_file/views/split_table.h"
#include "support/characters.h"
#include "support/display_width.h"
#include "support/money_text.h"

namespace krnqb::plan_file {
namespace {

constexpr std::string_view emptyCellSign = "·";

// Replaces control characters, which could be terminal commands, with blanks, so that a cell takes one line.
std::string Printable(std::string_view cell) {
  std::string view;
  while (!cell.empty()) {
    const std::string_view rest = cell;
    const char32_t character = TakeCharacter(cell);
    const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
    view += control ? std::string_view(" ") : rest.substr(0, rest.size() - cell.size());
  }
  return view;
}

std::string CellText(std::string_view cell) {
  return cell == emptyCellText ? std::string(emptyCellSign) : Printable(cell);
}

std::vector<std::string> RowTexts(const PlanBlock& block, std::size_t row, CellView cells) {
  const BlockKind kind = KindOfBlock(block.id);
  const bool values = cells == CellView::Values && kind != BlockKind::Other;
  std::vector<std::string> texts;
  for (std::size_t column = 0; column < block.rows[row].size(); ++column) {
    std::optional<double> amount;
    if (values && column >= FirstAmountColumn(kind)) amount = CellAmount(block, row, column);
    texts.push_back(amount ? MoneyText(*amount) : CellText(block.rows[row][column]));
  }
  return texts;
}

// The columns of cells that are not months: a rate, or the years of past performance.
std::size_t ColumnsBeforeMonths(std::size_t cells) noexcept {
  constexpr std::size_t monthsAndName = monthsOfAYear + 1;
  return cells > monthsAndName ? cells - monthsAndName : 0;
}

std::string BlockView(const PlanBlock& block, std::optional<YearMonth> start,
                      const TableViewOptions& options) {
  std::size_t cells = 0;
  for (const PlanRow& row : block.rows) cells = std::max(cells, row.size());
  std::vector<TableLine> lines;
  TableLayout layout{.width = options.width};
  if (const PlanRow headings = ColumnHeadings(block.id, cells, start); !headings.empty()) {
    lines.push_back({{""}, true});
    lines.back().texts.insert(lines.back().texts.end(), headings.begin(), headings.end());
    layout.columnsBefore = ColumnsBeforeMonths(cells);
  }
  for (std::size_t row = 0; row < block.rows.size(); ++row) {
    lines.push_back({RowTexts(block, row, options.cells)});
  }
  std::string view = ShortenedToWidth(CellText(BlockTitle(block.id)), options.width) + '\n';
  view += block.rows.empty() ? std::string("  (no rows)\n") : SplitTableText(lines, layout);
  return view;
}

PlanContent NamedContent(const PlanFile& plan) {
  PlanContent content = ReadPlanContent(plan);
  NameRowsAfterPlanned(content);
  return content;
}

}  // namespace

std::string TableView(const PlanTableContent& table, std::optional<YearMonth> start,
                      const TableViewOptions& options) {
  const std::string title =
      ShortenedToWidth(Printable(fmt::format("{} ({})", TableTitle(table.id), table.id)), options.width);
  std::string view = title + '\n' + std::string(DisplayWidth(title), '=') + '\n';
  for (const PlanBlock& block : table.blocks) view += '\n' + BlockView(block, start, options);
  if (table.blocks.empty()) view += "(no blocks)\n";
  return view;
}

std::string TableView(const PlanFile& plan, const TableViewOptions& options) {
  std::string view;
  for (const PlanTableContent& table : NamedContent(plan)) {
    if (!view.empty()) view += '\n';
    view += TableView(table, plan.Start(), options);
  }
  return view;
}

std::string TableView(const PlanFile& plan, std::string_view tableId, const TableViewOptions& options) {
  plan.Table(tableId);  // throws the error of a missing table
  const PlanContent content = NamedContent(plan);
  const auto table = std::find_if(content.begin(), content.end(),
                                  [&](const PlanTableContent& candidate) { return candidate.id == tableId; });
  return table == content.end() ? std::string() : TableView(*table, plan.Start(), options);
}

}  // namespace krnqb::plan_file
