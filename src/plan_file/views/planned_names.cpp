#include "plan_file/views/planned_names.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "plan_file/views/figures.h"
#include "support/number_text.h"

namespace krnqb::plan_file {
namespace {

// A block and the planned block whose rows are at the same places.
constexpr std::array<std::pair<std::string_view, std::string_view>, 7> twins{
    {{"db_sales_values_sales_actual", "db_sales_values_sales"},
     {"db_sales_values_annual_growth", "db_sales_values_sales"},
     {"db_sales_values_sales_annual_growth", "db_sales_values_sales"},
     {"db_sales_values_costs_actual", "db_sales_values_costs"},
     {"db_sales_values_costs_annual_growth", "db_sales_values_costs"},
     {"db_income_range_cat3_actual", "db_income_range_cat3"},
     {"db_contributionmargin_cat2_actual", "db_contributionmargin_cat2"}}};

void NameRows(PlanBlock& block, const PlanBlock& planned) {
  for (std::size_t row = 0; row < std::min(block.rows.size(), planned.rows.size()); ++row) {
    PlanRow& cells = block.rows[row];
    const PlanRow& twin = planned.rows[row];
    if (cells.empty() || twin.empty() || !IsNamelessCell(cells.front()) || IsNamelessCell(twin.front()))
      continue;
    cells.front() = fmt::format("({})", twin.front());
  }
}

}  // namespace

std::string_view PlannedTwinId(std::string_view blockId) noexcept {
  for (const auto& [twin, planned] : twins) {
    if (twin == blockId) return planned;
  }
  return {};
}

bool IsNamelessCell(std::string_view cell) {
  return cell.empty() || cell == emptyCellText || ConvertToDouble(cell);
}

void NameRowsAfterPlanned(PlanContent& content) {
  for (PlanTableContent& table : content) {
    for (PlanBlock& block : table.blocks) {
      const std::string_view twin = PlannedTwinId(block.id);
      if (twin.empty()) continue;
      if (const PlanBlock* planned = FindBlock(content, twin)) NameRows(block, *planned);
    }
  }
}

}  // namespace krnqb::plan_file
