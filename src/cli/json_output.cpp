#include "cli/json_output.h"

#include <nlohmann/json.hpp>

#include "cli/import/omissions.h"
#include "cli/import/skipped_amounts.h"
#include "plan_file/content.h"
#include "plan_file/headings.h"

namespace krnqb::cli {
namespace {

// Members keep the order in which they are written here.
using Json = nlohmann::ordered_json;

// Paths and file contents may hold bytes that are no UTF-8; they come out as U+FFFD.
std::string Text(const Json& json) {
  return json.dump(2, ' ', false, Json::error_handler_t::replace);
}

Json EventJson(const ImportEvent& event) {
  Json json{{"event", event.name}};
  if (event.name == "ProgressBarChange") json["percent"] = event.percent;
  if (!event.description.empty()) json["description"] = event.description;
  return json;
}

Json TableJson(const plan_file::TableChange& table) {
  return {{"id", table.id},
          {"rows_added", table.rowsAdded},
          {"cells_changed", table.cellsChanged},
          {"formulas_cleared", table.formulasCleared}};
}

Json OmissionJson(const Notice& omission) {
  Json json{{"kind", KindWord(omission.kind)}, {"text", OmissionText(omission)}, {"number", omission.number}};
  if (omission.place.request) json["request"] = *omission.place.request;
  if (!omission.place.fromDate.empty()) json["from"] = omission.place.fromDate;
  if (!omission.place.toDate.empty()) json["to"] = omission.place.toDate;
  return json;
}

// JSON has no number for a sum beyond the range of a double.
Json SumJson(const ImportReport::Total& total) {
  return total.sum ? Json(*total.sum) : Json("out of range");
}

// Counts and sums of what was left out, in all and by reason.
Json SkippedJson(const ImportReport& report) {
  Json json{
      {"count", report.LeftOut().count}, {"sum", SumJson(report.LeftOut())}, {"reasons", Json::object()}};
  for (const auto& [reason, total] : report.LeftOutByReason()) {
    json["reasons"][std::string(ReasonWord(reason))] = {{"count", total.count}, {"sum", SumJson(total)}};
  }
  json["past_performance"] = report.LeftOutOfPast().count;
  if (!report.PastPerformanceEnd().empty()) json["past_performance_ended_at"] = report.PastPerformanceEnd();
  return json;
}

Json AccountJson(const AccountNode& account) {
  Json json{{"list_id", account.listId},
            {"name", account.name},
            {"type", account.type},
            {"balance", account.balance},
            {"total_balance", account.totalBalance}};
  if (account.selected) json["selected"] = *account.selected;
  json["accounts"] = Json::array();
  for (const AccountNode& subAccount : account.subAccounts)
    json["accounts"].push_back(AccountJson(subAccount));
  return json;
}

Json BlockJson(const plan_file::PlanBlock& block) {
  return {{"id", block.id}, {"start_row", block.startRow}, {"rows", block.rows}};
}

}  // namespace

std::string ImportOutcomeJson(const ImportOutcome& outcome) {
  Json json{{"result", ResultWord(outcome.result)},
            {"error_number", outcome.errorNumber},
            {"error_description", outcome.errorDescription},
            {"events", Json::array()},
            {"tables", Json::array()},
            {"incomplete", Json::array()},
            {"skipped", SkippedJson(outcome.report)},
            {"elapsed_ms", outcome.elapsedMilliseconds}};
  for (const ImportEvent& event : outcome.events) json["events"].push_back(EventJson(event));
  for (const plan_file::TableChange& table : outcome.tables) json["tables"].push_back(TableJson(table));
  for (const Notice& omission : outcome.report.Missing())
    json["incomplete"].push_back(OmissionJson(omission));
  return Text(json);
}

std::string FailureJson(const Failure& failure) {
  return Text({{"result", ResultWord(ResultOf(failure.Code()))},
               {"error_number", failure.Number()},
               {"error_description", failure.Description()}});
}

std::string AccountsJson(const std::vector<AccountNode>& accounts) {
  Json json{{"result", "done"}, {"accounts", Json::array()}};
  for (const AccountNode& account : accounts) json["accounts"].push_back(AccountJson(account));
  return Text(json);
}

std::string CompanyInfoJson(const company::CompanyInfo& info) {
  Json json{{"result", "done"},
            {"path", info.path},
            {"name", info.name},
            {"processor", info.processorVersion},
            {"fiscal_month", info.fiscalMonth},
            {"records", Json::object()}};
  for (const company::RecordCount& record : info.records) json["records"][record.kind] = record.count;
  return Text(json);
}

std::string CompaniesJson(const std::vector<Company>& companies) {
  Json json{{"result", "done"}, {"companies", Json::array()}};
  for (const Company& company : companies) {
    json["companies"].push_back({{"name", company.name}, {"path", company.path}});
  }
  return Text(json);
}

std::string PlanJson(const plan_file::PlanFile& plan, const std::optional<std::string>& tableId) {
  Json json{{"result", "done"}, {"path", plan.Path().string()}};
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
  return Text(json);
}

}  // namespace krnqb::cli
