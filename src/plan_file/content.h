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
  std::string startRow;  ///< the sheet row of its first row, as the plan writes it
  std::vector<PlanRow> rows;
};

struct PlanTableContent {
  std::string id;
  std::vector<PlanBlock> blocks;
};

/// The cells of a plan at one time, apart from its document.
using PlanContent = std::vector<PlanTableContent>;

/// The text of a cell that holds nothing.
inline constexpr std::string_view emptyCellText = "*null*";

inline bool IsFormula(std::string_view cell) noexcept {
  return cell.starts_with('=');
}

/// What the plan holds now, tables, blocks and rows in their order. A table without blocks is there, empty.
PlanContent ReadPlanContent(const PlanFile& plan);
/// The same of one table; error 9 when the plan has no such table.
PlanTableContent ReadPlanTable(const PlanFile& plan, std::string_view tableId);

}  // namespace krnqb::plan_file
