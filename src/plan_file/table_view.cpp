#include "plan_file/table_view.h"

#include <fmt/format.h>

#include <algorithm>

#include "plan_file/headings.h"
#include "support/characters.h"

namespace krnqb::plan_file {
namespace {

constexpr std::string_view emptyCellSign = "·";
constexpr std::string_view columnGap = "  ";

// In characters. A wider cell is shown in full; the others are not padded to it.
constexpr std::size_t widestColumn = 100;

// Replaces control characters, which could be terminal commands, with blanks, so that a cell takes one line.
std::string CellView(std::string_view cell) {
  if (cell == emptyCellText) return std::string(emptyCellSign);
  std::string view;
  while (!cell.empty()) {
    const std::string_view rest = cell;
    const char32_t character = TakeCharacter(cell);
    const bool control = character < 0x20 || (character >= 0x7F && character < 0xA0);
    view += control ? std::string_view(" ") : rest.substr(0, rest.size() - cell.size());
  }
  return view;
}

std::vector<std::size_t> ColumnWidths(const std::vector<PlanRow>& lines) {
  std::vector<std::size_t> widths;
  for (const PlanRow& line : lines) {
    if (line.size() > widths.size()) widths.resize(line.size());
    for (std::size_t column = 0; column < line.size(); ++column) {
      const std::size_t width = CharacterCount(line[column]);
      if (width <= widestColumn) widths[column] = std::max(widths[column], width);
    }
  }
  return widths;
}

std::string LineView(const PlanRow& cells, const std::vector<std::size_t>& widths) {
  std::string line(columnGap);
  for (std::size_t column = 0; column < cells.size(); ++column) {
    const std::size_t width = CharacterCount(cells[column]);
    const std::string padding(widths[column] - std::min(widths[column], width), ' ');
    if (column > 0) line += columnGap;
    line += column == 0 ? cells[column] + padding : padding + cells[column];
  }
  line.erase(line.find_last_not_of(' ') + 1);
  return line += '\n';
}

std::string BlockView(const PlanBlock& block, std::optional<YearMonth> start) {
  std::size_t cells = 0;
  for (const PlanRow& row : block.rows) cells = std::max(cells, row.size());
  std::vector<PlanRow> lines;
  if (const PlanRow headings = ColumnHeadings(block.id, cells, start); !headings.empty()) {
    PlanRow& line = lines.emplace_back(1);
    line.insert(line.end(), headings.begin(), headings.end());
  }
  for (const PlanRow& row : block.rows) {
    PlanRow& line = lines.emplace_back();
    for (const std::string& cell : row) line.push_back(CellView(cell));
  }
  const std::vector<std::size_t> widths = ColumnWidths(lines);
  std::string view = CellView(BlockTitle(block.id)) + '\n';
  for (const PlanRow& line : lines) view += LineView(line, widths);
  if (block.rows.empty()) view += fmt::format("{}(no rows)\n", columnGap);
  return view;
}

}  // namespace

std::string TableView(const PlanTableContent& table, std::optional<YearMonth> start) {
  const std::string title = fmt::format("{} ({})", TableTitle(table.id), table.id);
  std::string view = title + '\n' + std::string(CharacterCount(title), '=') + '\n';
  for (const PlanBlock& block : table.blocks) view += '\n' + BlockView(block, start);
  if (table.blocks.empty()) view += "(no blocks)\n";
  return view;
}

std::string TableView(const PlanFile& plan) {
  std::string view;
  for (const PlanTableContent& table : ReadPlanContent(plan)) {
    if (!view.empty()) view += '\n';
    view += TableView(table, plan.Start());
  }
  return view;
}

std::string TableView(const PlanFile& plan, std::string_view tableId) {
  return TableView(ReadPlanTable(plan, tableId), plan.Start());
}

}  // namespace krnqb::plan_file
