#include "plan_file/content.h"

#include <algorithm>
#include <cstddef>

namespace krnqb::plan_file {
namespace {

// `width` is how many cells the row before it has, and probably this one.
PlanRow RowOf(const XmlElement& element, std::size_t width) {
  constexpr std::size_t widest = 32;
  PlanRow cells;
  cells.reserve(std::min(width, widest));
  for (XmlElement cell = element.FirstChild(); cell; cell = cell.NextSibling()) cells.push_back(cell.Text());
  return cells;
}

PlanBlock BlockOf(const XmlElement& element) {
  PlanBlock block{element.Attribute("id").value_or(""), element.Attribute("startrow").value_or(""), {}};
  for (XmlElement row = element.FirstChild(); row; row = row.NextSibling()) {
    block.rows.push_back(RowOf(row, block.rows.empty() ? 0 : block.rows.back().size()));
  }
  return block;
}

}  // namespace

PlanTableContent ReadPlanTable(const PlanFile& plan, std::string_view tableId) {
  PlanTableContent table{std::string(tableId), {}};
  for (const XmlElement& block : plan.Table(tableId).Child("tableblocks").Children()) {
    table.blocks.push_back(BlockOf(block));
  }
  return table;
}

PlanContent ReadPlanContent(const PlanFile& plan) {
  PlanContent content;
  for (const std::string& id : plan.TableIds()) content.push_back(ReadPlanTable(plan, id));
  return content;
}

}  // namespace krnqb::plan_file
