#include "cli/report/changes.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <utility>

#include "cli/report/amounts.h"
#include "html/elements.h"
#include "html/table.h"
#include "plan_file/headings.h"

namespace krnqb::cli {
namespace {

using plan_file::CellChange;
using plan_file::RowChange;

// The changes of one row of a block, by column.
struct ChangedRow {
  std::string name;
  std::string what;  // "added", "removed" or "changed"
  std::size_t width = 0;
  std::map<std::size_t, html::Cell> cells;
};
// By block and row; removed rows are counted in an earlier state.
using ChangedRows = std::map<std::pair<bool, std::size_t>, ChangedRow>;

std::string ShownCell(const std::string& cell) {
  return cell.empty() || cell == plan_file::emptyCellText ? std::string("(empty)") : cell;
}

ChangedRow RowOf(const RowChange& change, const std::string& what) {
  ChangedRow row{.name = change.name, .what = what, .width = change.cells.size(), .cells = {}};
  for (std::size_t column = 1; column < change.cells.size(); ++column) {
    const std::string& cell = change.cells[column];
    const bool empty = cell.empty() || cell == plan_file::emptyCellText;
    row.cells[column] = {empty ? html::Fragment() : html::Text(cell), cell};
  }
  return row;
}

void Add(std::map<std::string, ChangedRows>& blocks, const std::vector<CellChange>& cells) {
  for (const CellChange& cell : cells) {
    ChangedRow& row = blocks[cell.block][{false, cell.row}];
    row.name = cell.name;
    if (row.what.empty()) row.what = "changed";
    row.width = std::max(row.width, cell.width);
    const html::Fragment text = html::Element("del", html::Text(ShownCell(cell.before))) + html::Text(" ") +
                                html::Element("ins", html::Text(ShownCell(cell.after)));
    row.cells[cell.column] = {text, cell.after};
  }
}

html::Fragment BlockTable(const std::string& tableId, const std::string& block, const ChangedRows& rows,
                          std::optional<YearMonth> start, std::size_t& left) {
  std::size_t width = 1;
  for (const auto& [place, row] : rows) {
    width = std::max(width, row.width);
    if (!row.cells.empty()) width = std::max(width, row.cells.rbegin()->first + 1);
  }
  html::Table table{
      .caption = fmt::format("{}: {}", plan_file::TableTitle(tableId), plan_file::BlockTitle(block)),
      .columns = {{"Row", html::Alignment::Text}, {"Change", html::Alignment::Text}},
      .rows = {},
      .name = fmt::format("{}/{}", tableId, block)};
  std::vector<std::string> headings = plan_file::ColumnHeadings(block, width, start);
  for (std::size_t column = headings.size() + 1; column < width; ++column)
    headings.push_back(fmt::format("Column {}", column));
  for (const std::string& heading : headings) table.columns.push_back({heading, html::Alignment::Text});
  for (const auto& [place, row] : rows) {
    if (left == 0) break;
    --left;
    html::Row shown{.heading = {html::Name(ShownCell(row.name))},
                    .cells = {{html::Text(row.what)}},
                    .name = fmt::format("{} {}", row.what, place.second)};
    for (std::size_t column = 1; column < width; ++column) {
      const auto cell = row.cells.find(column);
      shown.cells.push_back(cell == row.cells.end() ? html::Cell{} : cell->second);
    }
    if (const auto renamed = row.cells.find(0); renamed != row.cells.end()) shown.heading = renamed->second;
    table.rows.push_back(std::move(shown));
  }
  return html::TableRegion(table);
}

html::Fragment TableChanges(const plan_file::TableChange& table, std::optional<YearMonth> start) {
  std::map<std::string, ChangedRows> blocks;
  for (const RowChange& row : table.added) blocks[row.block][{false, row.row}] = RowOf(row, "added");
  for (const RowChange& row : table.removed) blocks[row.block][{true, row.row}] = RowOf(row, "removed");
  Add(blocks, table.changed);
  Add(blocks, table.cleared);
  constexpr std::size_t most = 1'000;
  std::size_t left = most;
  std::size_t rows = 0;
  html::Fragment content;
  for (const auto& [block, changed] : blocks) {
    rows += changed.size();
    content += BlockTable(table.id, block, changed, start, left);
  }
  if (rows > most) {
    content +=
        html::Remark(fmt::format("{} more rows are not shown; krnqb plan diff shows all.", rows - most));
  }
  const std::string summary = fmt::format(
      "{}: {} added, {} removed, {} changed, {} cleared", plan_file::TableTitle(table.id),
      Counted(table.rowsAdded, "row", "rows"), table.rowsRemoved,
      Counted(table.cellsChanged, "cell", "cells"), Counted(table.formulasCleared, "formula", "formulas"));
  return html::Details(html::Text(summary), content);
}

}  // namespace

html::Fragment EveryChange(const std::vector<plan_file::TableChange>& tables,
                           std::optional<YearMonth> start) {
  html::Fragment content;
  for (const plan_file::TableChange& table : tables) {
    if (table.Any()) content += TableChanges(table, start);
  }
  return content;
}

}  // namespace krnqb::cli
