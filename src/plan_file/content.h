#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "plan_file/file.h"

namespace krnqb::plan_file {

/// A row's cells in column order; cell 0 is its name.
using PlanRow = std::vector<std::string>;

struct PlanBlock {
  std::string id;
  std::string startRow;  ///< the sheet row of its first row, as written in the plan
  std::vector<PlanRow> rows;
};

struct PlanTableContent {
  std::string id;
  std::vector<PlanBlock> blocks;
};

/// A copy of a plan's cells, independent of its document.
using PlanContent = std::vector<PlanTableContent>;

/// The text of an empty cell.
inline constexpr std::string_view emptyCellText = "*null*";

inline bool IsFormula(std::string_view cell) noexcept {
  return cell.starts_with('=');
}

/// Returns the plan's tables, blocks and rows in their order, tables without blocks included.
PlanContent ReadPlanContent(const PlanFile& plan);
/// Returns one table. Throws Error 9 if the plan has no such table.
PlanTableContent ReadPlanTable(const PlanFile& plan, std::string_view tableId);

}  // namespace krnqb::plan_file
