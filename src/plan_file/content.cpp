#include "plan_file/content.h"

namespace krnqb::plan_file {
namespace {

PlanRow RowOf(const XmlElement& element) {
  PlanRow cells;
  for (XmlElement cell = element.FirstChild(); cell; cell = cell.NextSibling()) cells.push_back(cell.Text());
  return cells;
}

PlanBlock BlockOf(const XmlElement& element) {
  PlanBlock block{element.Attribute("id").value_or(""), element.Attribute("startrow").value_or(""), {}};
  for (XmlElement row = element.FirstChild(); row; row = row.NextSibling()) block.rows.push_back(RowOf(row));
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
