#include "plan_file/views/figures.h"

#include "krnqb/keyed_collection.h"

namespace krnqb::plan_file {
namespace {

bool HoldsExpenses(std::string_view blockId) noexcept {
  return blockId.starts_with("db_income_range_cat3") || blockId.starts_with("db_contributionmargin_cat2");
}

bool IsClosingRow(const PlanBlock& block, std::size_t row) noexcept {
  const std::size_t closingRows = HoldsExpenses(block.id) ? 2 : 1;
  return row + closingRows >= block.rows.size();
}

bool HasOtherFormula(const PlanBlock& block, std::size_t row) {
  const PlanRow& cells = block.rows[row];
  for (std::size_t column = FirstAmountColumn(KindOfBlock(block.id)); column < cells.size(); ++column) {
    if (IsFormula(cells[column]) && !CellAmount(block, row, column)) return true;
  }
  return false;
}

std::string_view NameOf(const PlanRow& row) noexcept {
  return row.empty() ? std::string_view() : std::string_view(row.front());
}

bool IsNamedTotal(const PlanRow& row) {
  constexpr std::string_view word = "total";
  return FoldedKey(NameOf(row).substr(0, word.size())) == word;
}

GroupFigures FiguresOfBlock(const PlanBlock& block) {
  GroupFigures figures;
  for (std::size_t row = 0; row < block.rows.size(); ++row) {
    if (IsTotalRow(block, row)) continue;
    figures.amounts += RowAmounts(block, row);
    if (HasUnreadMonth(block, row)) figures.unreadRows.emplace_back(NameOf(block.rows[row]));
  }
  return figures;
}

}  // namespace

std::string_view GroupTitle(FigureGroup group) noexcept {
  switch (group) {
    case FigureGroup::Sales:
      return "Sales";
    case FigureGroup::Costs:
      return "Cost of goods";
    case FigureGroup::Expenses:
      break;
  }
  return "Expenses";
}

std::string_view GroupBlockId(FigureGroup group, QBKRNproduct product, BlockKind kind) noexcept {
  const bool planned = kind == BlockKind::Planned;
  switch (group) {
    case FigureGroup::Sales:
      return planned ? "db_sales_values_sales" : "db_sales_values_sales_actual";
    case FigureGroup::Costs:
      return planned ? "db_sales_values_costs" : "db_sales_values_costs_actual";
    case FigureGroup::Expenses:
      break;
  }
  if (product == QBKRN_BRI) {
    return planned ? "db_contributionmargin_cat2" : "db_contributionmargin_cat2_actual";
  }
  return planned ? "db_income_range_cat3" : "db_income_range_cat3_actual";
}

const PlanBlock* FindBlock(const PlanContent& content, std::string_view blockId) noexcept {
  for (const PlanTableContent& table : content) {
    for (const PlanBlock& block : table.blocks) {
      if (block.id == blockId) return &block;
    }
  }
  return nullptr;
}

bool IsTotalRow(const PlanBlock& block, std::size_t row) {
  if (row >= block.rows.size() || !IsClosingRow(block, row)) return false;
  if (NameOf(block.rows[row]) == "Depreciation") return false;
  return IsNamedTotal(block.rows[row]) || HasOtherFormula(block, row);
}

YearAmounts PlanFigures::Result() const noexcept {
  YearAmounts result;
  for (const FigureGroup group : figureGroups) {
    const std::optional<GroupFigures>& figures = groups[static_cast<std::size_t>(group)];
    if (!figures) continue;
    if (group == FigureGroup::Sales) {
      result += figures->amounts;
    } else {
      result -= figures->amounts;
    }
  }
  return result;
}

PlanFigures FiguresOf(const PlanContent& content, QBKRNproduct product, BlockKind kind) {
  PlanFigures figures;
  for (const FigureGroup group : figureGroups) {
    const PlanBlock* block = FindBlock(content, GroupBlockId(group, product, kind));
    if (block != nullptr) figures.groups[static_cast<std::size_t>(group)] = FiguresOfBlock(*block);
  }
  return figures;
}

}  // namespace krnqb::plan_file
