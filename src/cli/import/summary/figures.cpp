#include "cli/import/summary/figures.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <string_view>
#include <utility>

#include "plan_file/growth_formula.h"
#include "plan_file/headings.h"

namespace krnqb::cli {
namespace {

using plan_file::BlockKind;
using plan_file::FigureGroup;
using plan_file::PlanBlock;
using plan_file::PlanContent;

bool WritesPlanned(const SummaryScope& scope) noexcept {
  return scope.balances == BalImport_Planned || scope.balances == BalImport_All;
}

bool WritesActual(const SummaryScope& scope) noexcept {
  return scope.balances == BalImport_Actual || scope.balances == BalImport_All;
}

std::optional<FiguresChange> Figures(const PlanContent& before, const PlanContent& after, BlockKind kind,
                                     const SummaryScope& scope) {
  FiguresChange change{plan_file::FiguresOf(before, scope.product, kind),
                       plan_file::FiguresOf(after, scope.product, kind)};
  const bool written = kind == BlockKind::Planned ? WritesPlanned(scope) : WritesActual(scope);
  if (!written && !change.Any()) return std::nullopt;
  return change;
}

bool IsNamed(std::string_view name) noexcept {
  return !name.empty() && name != plan_file::emptyCellText;
}

class AddedRows {
 public:
  AddedRows(const PlanContent& after, const SummaryScope& scope) : after_(after), scope_(scope) {}

  std::vector<AddedRow> Of(FigureGroup group, const std::vector<plan_file::TableChange>& changes) const {
    const std::string_view planned = plan_file::GroupBlockId(group, scope_.product, BlockKind::Planned);
    std::vector<AddedRow> rows;
    for (const plan_file::TableChange& table : changes) {
      for (const plan_file::RowChange& row : table.added) {
        if (row.block == planned && IsNamed(row.name)) rows.push_back(Row(group, row));
      }
    }
    return rows;
  }

 private:
  AddedRow Row(FigureGroup group, const plan_file::RowChange& row) const {
    return {row.name, WritesPlanned(scope_) ? YearSum(group, BlockKind::Planned, row.row) : std::nullopt,
            WritesActual(scope_) ? YearSum(group, BlockKind::Actual, row.row) : std::nullopt};
  }

  std::optional<double> YearSum(FigureGroup group, BlockKind kind, std::size_t row) const {
    const PlanBlock* block =
        plan_file::FindBlock(after_, plan_file::GroupBlockId(group, scope_.product, kind));
    if (block == nullptr || row >= block->rows.size()) return std::nullopt;
    return plan_file::RowAmounts(*block, row).Sum();
  }

  const PlanContent& after_;
  const SummaryScope& scope_;
};

PastRow PastRowOf(const PlanBlock& block, std::size_t row, const SummaryScope& scope) {
  const std::size_t cells = block.rows[row].size();
  PastRow past{block.rows[row].front(), plan_file::ColumnHeadings(block.id, cells, scope.planStart), {}};
  for (std::size_t column = past.headings.size() + 1; column < cells; ++column) {
    past.headings.push_back(fmt::format("Column {}", column));
  }
  for (std::size_t column = 1; column < cells; ++column) {
    past.amounts.push_back(plan_file::CellAmount(block, row, column));
  }
  return past;
}

// The changed rows, in plan order.
std::vector<PastRow> PastRows(const PlanContent& after, const std::vector<plan_file::TableChange>& changes,
                              const SummaryScope& scope) {
  std::vector<PastRow> rows;
  std::set<std::pair<std::string_view, std::size_t>> seen;
  for (const plan_file::TableChange& table : changes) {
    for (const plan_file::CellChange& cell : table.changed) {
      if (plan_file::KindOfBlock(cell.block) != BlockKind::PastPerformance) continue;
      const PlanBlock* block = plan_file::FindBlock(after, cell.block);
      const bool found = block != nullptr && cell.row < block->rows.size() && !block->rows[cell.row].empty();
      if (found && seen.emplace(cell.block, cell.row).second) {
        rows.push_back(PastRowOf(*block, cell.row, scope));
      }
    }
  }
  return rows;
}

std::int64_t ClearedGrowth(const std::vector<plan_file::TableChange>& changes) {
  std::int64_t count = 0;
  for (const plan_file::TableChange& table : changes) {
    count += std::count_if(table.cleared.begin(), table.cleared.end(), [](const plan_file::CellChange& cell) {
      return plan_file::KindOfBlock(cell.block) == BlockKind::Planned &&
             plan_file::ParseGrowthFormula(cell.before);
    });
  }
  return count;
}

}  // namespace

ImportSummary SummarizeImport(const PlanContent& before, const PlanContent& after,
                              const std::vector<plan_file::TableChange>& changes, const SummaryScope& scope) {
  ImportSummary summary;
  summary.scope = scope;
  summary.planned = Figures(before, after, BlockKind::Planned, scope);
  summary.actual = Figures(before, after, BlockKind::Actual, scope);
  summary.growthCleared = ClearedGrowth(changes);
  for (const FigureGroup group : plan_file::figureGroups) {
    summary.added[static_cast<std::size_t>(group)] = AddedRows(after, scope).Of(group, changes);
  }
  summary.pastPerformanceImported = scope.pastPerformance && scope.balances != BalImport_None &&
                                    (scope.product == QBKRN_ALD || scope.product == QBKRN_COR);
  if (summary.pastPerformanceImported) summary.pastRows = PastRows(after, changes, scope);
  return summary;
}

}  // namespace krnqb::cli
