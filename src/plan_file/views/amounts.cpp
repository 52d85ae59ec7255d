#include "plan_file/views/amounts.h"

#include <algorithm>
#include <numeric>

#include "plan_file/growth_formula.h"
#include "support/number_text.h"

namespace krnqb::plan_file {
namespace {

constexpr std::array<std::string_view, 5> plannedBlocks{"db_sales_values_sales", "db_sales_values_costs",
                                                        "db_income_range_cat3", "db_contributionmargin_cat2",
                                                        "db_contributionmargin_result"};

bool IsPlanned(std::string_view blockId) noexcept {
  return std::find(plannedBlocks.begin(), plannedBlocks.end(), blockId) != plannedBlocks.end();
}

bool IsEmptyCell(std::string_view cell) noexcept {
  return cell.empty() || cell == emptyCellText;
}

}  // namespace

BlockKind KindOfBlock(std::string_view blockId) noexcept {
  constexpr std::string_view actualEnd = "_actual";
  if (IsPlanned(blockId)) return BlockKind::Planned;
  if (blockId.ends_with(actualEnd) && IsPlanned(blockId.substr(0, blockId.size() - actualEnd.size()))) {
    return BlockKind::Actual;
  }
  return blockId.starts_with("db_pastperformance_") ? BlockKind::PastPerformance : BlockKind::Other;
}

std::size_t FirstAmountColumn(BlockKind kind) noexcept {
  return kind == BlockKind::Planned ? 2 : 1;
}

double YearAmounts::Sum() const noexcept {
  return std::accumulate(months.begin(), months.end(), 0.0);
}

YearAmounts& YearAmounts::operator+=(const YearAmounts& other) noexcept {
  for (std::size_t month = 0; month < monthsOfAYear; ++month) months[month] += other.months[month];
  return *this;
}

YearAmounts& YearAmounts::operator-=(const YearAmounts& other) noexcept {
  for (std::size_t month = 0; month < monthsOfAYear; ++month) months[month] -= other.months[month];
  return *this;
}

std::optional<double> CellAmount(const PlanBlock& block, std::size_t row, std::size_t column) {
  if (row >= block.rows.size() || column >= block.rows[row].size()) return std::nullopt;
  const std::string& cell = block.rows[row][column];
  if (IsEmptyCell(cell)) return std::nullopt;
  if (!IsFormula(cell)) return ConvertToDouble(cell);
  return KindOfBlock(block.id) == BlockKind::Planned ? GrownAmount(block, row, cell) : std::nullopt;
}

YearAmounts RowAmounts(const PlanBlock& block, std::size_t row) {
  YearAmounts amounts;
  const std::size_t first = FirstAmountColumn(KindOfBlock(block.id));
  for (std::size_t month = 0; month < monthsOfAYear; ++month) {
    amounts.months[month] = CellAmount(block, row, first + month).value_or(0);
  }
  return amounts;
}

bool HasUnreadMonth(const PlanBlock& block, std::size_t row) {
  const std::size_t first = FirstAmountColumn(KindOfBlock(block.id));
  const PlanRow& cells = block.rows.at(row);
  for (std::size_t column = first; column < std::min(first + monthsOfAYear, cells.size()); ++column) {
    if (!IsEmptyCell(cells[column]) && !CellAmount(block, row, column)) return true;
  }
  return false;
}

}  // namespace krnqb::plan_file
