#include "cli/plan/json_output.h"

#include "cli/console/json_text.h"
#include "plan_file/content.h"
#include "plan_file/headings.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

Json BlockJson(const plan_file::PlanBlock& block) {
  return {{"id", block.id}, {"start_row", block.startRow}, {"rows", block.rows}};
}

}  // namespace

std::string PlanJson(const plan_file::PlanFile& plan, const std::optional<std::string>& tableId) {
  Json json{{"result", "done"}, {"path", TextOfPath(plan.Path())}};
  const auto product = plan.Product();
  const auto start = plan.Start();
  json["product"] = product ? Json(plan_file::ProductText(*product)) : Json();
  json["start"] = start ? Json(plan_file::PlanStartText(*start)) : Json();
  json["tables"] = Json::array();
  for (const plan_file::PlanTableContent& table : plan_file::ReadPlanContent(plan)) {
    if (tableId && table.id != *tableId) continue;
    Json blocks = Json::array();
    for (const plan_file::PlanBlock& block : table.blocks) blocks.push_back(BlockJson(block));
    json["tables"].push_back(
        {{"id", table.id}, {"title", plan_file::TableTitle(table.id)}, {"blocks", blocks}});
  }
  return JsonText(json);
}

}  // namespace krnqb::cli
