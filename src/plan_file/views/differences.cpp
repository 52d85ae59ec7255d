#include "plan_file/views/differences.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <string_view>
#include <tuple>
#include <utility>

#include "plan_file/changes.h"
#include "plan_file/headings.h"
#include "plan_file/views/planned_names.h"

namespace krnqb::plan_file {
namespace {

// Finds the first block of each id.
class Blocks {
 public:
  explicit Blocks(const PlanContent& content) {
    for (const PlanTableContent& table : content) {
      for (const PlanBlock& block : table.blocks) {
        blocks_.try_emplace({table.id, block.id}, &block);
        firstOfAnyTable_.try_emplace(block.id, &block);
      }
    }
  }

  const PlanBlock* Find(std::string_view tableId, std::string_view blockId) const {
    const auto found = blocks_.find({tableId, blockId});
    return found == blocks_.end() ? nullptr : found->second;
  }

  const PlanBlock* FindInAnyTable(std::string_view blockId) const {
    const auto found = firstOfAnyTable_.find(blockId);
    return found == firstOfAnyTable_.end() ? nullptr : found->second;
  }

 private:
  std::map<std::pair<std::string_view, std::string_view>, const PlanBlock*> blocks_;
  std::map<std::string_view, const PlanBlock*> firstOfAnyTable_;
};

bool IsName(std::string_view text) noexcept {
  return !text.empty() && text != emptyCellText;
}

std::string_view NameIn(const PlanBlock* block, std::size_t row) noexcept {
  if (block == nullptr || row >= block->rows.size() || block->rows[row].empty()) return {};
  return block->rows[row].front();
}

// One table of one state, for naming its rows and columns.
class Names {
 public:
  Names(const Blocks& blocks, const std::string& tableId, std::optional<YearMonth> start)
      : blocks_(blocks), tableId_(tableId), start_(start) {}

  std::string Row(const std::string& blockId, std::size_t row, const std::string& name) const {
    const std::string_view twin = PlannedTwinId(blockId);
    if (twin.empty()) return IsName(name) ? name : Numbered(row);
    if (!IsNamelessCell(name)) return name;
    const std::string_view planned = NameIn(blocks_.FindInAnyTable(twin), row);
    return IsNamelessCell(planned) ? Numbered(row) : std::string(planned);
  }

  std::string Column(const std::string& blockId, std::size_t column) {
    if (column == 0) return "Name";
    const std::vector<std::string>& headings = Headings(blockId);
    return column <= headings.size() ? headings[column - 1] : fmt::format("column {}", column + 1);
  }

  const PlanRow* Cells(const std::string& blockId, std::size_t row) const {
    const PlanBlock* block = blocks_.Find(tableId_, blockId);
    return block != nullptr && row < block->rows.size() ? &block->rows[row] : nullptr;
  }

 private:
  static std::string Numbered(std::size_t row) { return fmt::format("row {}", row + 1); }

  const std::vector<std::string>& Headings(const std::string& blockId) {
    const auto known = headings_.find(blockId);
    if (known != headings_.end()) return known->second;
    std::size_t cells = 0;
    if (const PlanBlock* block = blocks_.Find(tableId_, blockId)) {
      for (const PlanRow& row : block->rows) cells = std::max(cells, row.size());
    }
    return headings_.emplace(blockId, ColumnHeadings(blockId, cells, start_)).first->second;
  }

  const Blocks& blocks_;
  const std::string& tableId_;
  std::optional<YearMonth> start_;
  std::map<std::string, std::vector<std::string>> headings_;
};

RowDifference WholeRow(const RowChange& change, RowDifference::Kind kind, Names& names) {
  RowDifference difference{.kind = kind,
                           .block = std::string(BlockTitle(change.block)),
                           .row = names.Row(change.block, change.row, change.name),
                           .cells = {}};
  const PlanRow* const cells = names.Cells(change.block, change.row);
  for (std::size_t column = 1; cells != nullptr && column < cells->size(); ++column) {
    const std::string& text = (*cells)[column];
    if (!IsName(text)) continue;
    CellDifference cell{
        .column = column, .heading = names.Column(change.block, column), .before = {}, .after = {}};
    (kind == RowDifference::Kind::Added ? cell.after : cell.before) = text;
    difference.cells.push_back(std::move(cell));
  }
  return difference;
}

// The changed cells of a table by block and row, in plan order of the later state.
std::vector<RowDifference> ChangedRows(const TableChange& change, Names& names) {
  std::vector<const CellChange*> cells;
  for (const CellChange& cell : change.changed) cells.push_back(&cell);
  for (const CellChange& cell : change.cleared) cells.push_back(&cell);
  std::map<std::string_view, std::size_t> blocks;
  for (const CellChange* cell : cells) blocks.emplace(cell->block, blocks.size());
  std::ranges::stable_sort(cells, [&](const CellChange* left, const CellChange* right) {
    return std::tuple(blocks[left->block], left->row, left->column) <
           std::tuple(blocks[right->block], right->row, right->column);
  });
  std::vector<RowDifference> rows;
  const CellChange* previous = nullptr;
  for (const CellChange* cell : cells) {
    if (previous == nullptr || previous->block != cell->block || previous->row != cell->row) {
      rows.push_back({.kind = RowDifference::Kind::Changed,
                      .block = std::string(BlockTitle(cell->block)),
                      .row = names.Row(cell->block, cell->row, cell->name),
                      .cells = {}});
    }
    rows.back().cells.push_back(
        {cell->column, names.Column(cell->block, cell->column), cell->before, cell->after});
    previous = cell;
  }
  return rows;
}

}  // namespace

std::vector<TableDifference> NamedDifferences(const PlanContent& before, const PlanContent& after,
                                              std::optional<YearMonth> start) {
  const Blocks blocksBefore(before);
  const Blocks blocksAfter(after);
  std::vector<TableDifference> tables;
  for (const TableChange& change : CompareTables(before, after)) {
    if (!change.Any()) continue;
    Names earlier(blocksBefore, change.id, start);
    Names later(blocksAfter, change.id, start);
    TableDifference table{.id = change.id, .title = TableTitle(change.id), .rows = {}};
    for (const RowChange& row : change.removed) {
      table.rows.push_back(WholeRow(row, RowDifference::Kind::Removed, earlier));
    }
    for (const RowChange& row : change.added) {
      table.rows.push_back(WholeRow(row, RowDifference::Kind::Added, later));
    }
    for (RowDifference& row : ChangedRows(change, later)) table.rows.push_back(std::move(row));
    tables.push_back(std::move(table));
  }
  return tables;
}

}  // namespace krnqb::plan_file
