#include "plan_file/views/row_figures.h"

#include <algorithm>

#include "plan_file/growth_formula.h"
#include "plan_file/views/planned_names.h"

namespace krnqb::plan_file {
namespace {

std::string NameOf(const PlanRow& row) {
  return row.empty() || IsNamelessCell(row.front()) ? std::string() : row.front();
}

std::optional<double> FormulaAmount(const PlanRow& row, std::size_t column) {
  if (column >= row.size()) return std::nullopt;
  const std::optional<GrowthFormula> formula = ParseGrowthFormula(row[column]);
  return formula ? std::optional(formula->amount) : std::nullopt;
}

void ReadMonths(RowFigures& figures, const PlanBlock* block, std::size_t row, FigureSource source) {
  if (block == nullptr || row >= block->rows.size()) return;
  const std::size_t first = FirstAmountColumn(KindOfBlock(block->id));
  for (std::size_t month = 0; month < monthsOfAYear; ++month) {
    figures.months[month] = source == FigureSource::GrowthFormulas
                                ? FormulaAmount(block->rows[row], first + month)
                                : CellAmount(*block, row, first + month);
  }
}

}  // namespace

std::vector<RowFigures> RowFiguresOf(const PlanContent& content, QBKRNproduct product, FigureSource source) {
  std::vector<RowFigures> rows;
  for (const FigureGroup group : figureGroups) {
    const PlanBlock* const planned = FindBlock(content, GroupBlockId(group, product, BlockKind::Planned));
    const PlanBlock* const actual = FindBlock(content, GroupBlockId(group, product, BlockKind::Actual));
    if (planned == nullptr) continue;
    for (std::size_t row = 0; row < planned->rows.size(); ++row) {
      if (IsTotalRow(*planned, row)) continue;
      RowFigures figures{.group = group,
                         .row = static_cast<std::int32_t>(row) + 1,
                         .name = NameOf(planned->rows[row]),
                         .hasActualRow = actual != nullptr && row < actual->rows.size()};
      if (figures.hasActualRow) figures.actualName = NameOf(actual->rows[row]);
      ReadMonths(figures, source == FigureSource::GrowthFormulas ? planned : actual, row, source);
      rows.push_back(std::move(figures));
    }
  }
  return rows;
}

}  // namespace krnqb::plan_file
