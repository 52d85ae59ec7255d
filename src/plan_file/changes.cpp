#include "plan_file/changes.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <unordered_map>
#include <utility>

#include "plan_file/alignment.h"

namespace krnqb::plan_file {
namespace {

std::string_view CellOf(const PlanRow& row, std::size_t column) noexcept {
  return column < row.size() ? std::string_view(row[column]) : std::string_view();
}

// A row may have any number of changed cells, each with its name.
std::string Shortened(const std::string& text) {
  constexpr std::size_t longest = 200;
  if (text.size() <= longest) return text;
  std::size_t end = longest;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
  return text.substr(0, end) + "...";
}

// `row` is the index of the row in the later state.
void CompareRow(const PlanRow& before, const PlanRow& after, const std::string& blockId, std::size_t row,
                TableChange& change) {
  const std::string block = Shortened(blockId);
  const std::string name = Shortened(std::string(CellOf(after, 0)));
  for (std::size_t column = 0; column < std::max(before.size(), after.size()); ++column) {
    const std::string_view earlier = CellOf(before, column);
    const std::string_view later = CellOf(after, column);
    const bool there = column < before.size() && column < after.size();
    if (there && earlier == later) continue;
    const bool clears = there && IsFormula(earlier) && later == emptyCellText;
    (clears ? change.cleared : change.changed)
        .push_back({block, row, name, column, std::string(earlier), std::string(later), after.size()});
  }
}

RowChange ChangeOf(const PlanBlock& block, const std::string& id, std::size_t row) {
  const PlanRow& cells = block.rows[row];
  return {id, row, std::string(CellOf(cells, 0)), cells};
}

void CompareBlock(const PlanBlock& before, const PlanBlock& after, const std::string& id,
                  TableChange& change) {
  std::size_t nextBefore = 0;
  const auto removeUpTo = [&](std::size_t end) {
    for (; nextBefore < end; ++nextBefore) {
      change.removed.push_back(ChangeOf(before, id, nextBefore));
    }
  };
  const std::vector<std::optional<std::size_t>> partners = MatchRows(before.rows, after.rows);
  for (std::size_t row = 0; row < after.rows.size(); ++row) {
    if (const std::optional<std::size_t>& partner = partners[row]) {
      removeUpTo(*partner);
      CompareRow(before.rows[*partner], after.rows[row], id, row, change);
      nextBefore = *partner + 1;
    } else {
      change.added.push_back(ChangeOf(after, id, row));
    }
  }
  removeUpTo(before.rows.size());
}

using BlockKey =
    std::pair<std::string, std::size_t>;  // the id, and the number of earlier blocks with that id

std::vector<std::pair<BlockKey, const PlanBlock*>> KeyedBlocks(const PlanTableContent& table) {
  std::vector<std::pair<BlockKey, const PlanBlock*>> blocks;
  std::map<std::string, std::size_t> times;
  blocks.reserve(table.blocks.size());
  for (const PlanBlock& block : table.blocks) blocks.push_back({{block.id, times[block.id]++}, &block});
  return blocks;
}

void CountChanges(TableChange& change) {
  change.rowsAdded = static_cast<std::int64_t>(change.added.size());
  change.rowsRemoved = static_cast<std::int64_t>(change.removed.size());
  change.cellsChanged = static_cast<std::int64_t>(change.changed.size());
  change.formulasCleared = static_cast<std::int64_t>(change.cleared.size());
}

TableChange CompareTable(const PlanTableContent& before, const PlanTableContent& after) {
  TableChange change;
  change.id = before.id;
  const PlanBlock absent;
  const auto blocksBefore = KeyedBlocks(before);
  std::map<BlockKey, const PlanBlock*> remaining(blocksBefore.begin(), blocksBefore.end());
  for (const auto& [key, block] : KeyedBlocks(after)) {
    const auto found = remaining.find(key);
    CompareBlock(found == remaining.end() ? absent : *found->second, *block, key.first, change);
    if (found != remaining.end()) remaining.erase(found);
  }
  for (const auto& [key, block] : blocksBefore) {
    if (remaining.contains(key)) CompareBlock(*block, absent, key.first, change);
  }
  CountChanges(change);
  return change;
}

using TablesById = std::unordered_map<std::string_view, const PlanTableContent*>;

TablesById ById(const PlanContent& content) {
  TablesById tables;
  for (const PlanTableContent& table : content) tables.emplace(table.id, &table);
  return tables;
}

}  // namespace

std::vector<TableChange> CompareTables(const PlanContent& before, const PlanContent& after) {
  std::vector<TableChange> changes;
  const TablesById earlierTables = ById(before);
  const TablesById laterTables = ById(after);
  for (const PlanTableContent& table : before) {
    const auto later = laterTables.find(table.id);
    changes.push_back(later == laterTables.end() ? CompareTable(table, {table.id, {}})
                                                 : CompareTable(table, *later->second));
  }
  for (const PlanTableContent& table : after) {
    if (!earlierTables.contains(table.id)) changes.push_back(CompareTable({table.id, {}}, table));
  }
  return changes;
}

std::vector<TableChange> CompareTables(const PlanFile& before, const PlanFile& after) {
  return CompareTables(ReadPlanContent(before), ReadPlanContent(after));
}

}  // namespace krnqb::plan_file
