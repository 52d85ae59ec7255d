#include "cli/import/json_output.h"

#include "cli/console/json_text.h"

namespace krnqb::cli {
namespace {

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

Json OmissionJson(const Omission& omission) {
  Json json{{"kind", KindWord(omission.kind)}, {"text", OmissionText(omission)}, {"number", omission.number}};
  if (omission.place.request) json["request"] = *omission.place.request;
  if (!omission.place.fromDate.empty()) json["from"] = omission.place.fromDate;
  if (!omission.place.toDate.empty()) json["to"] = omission.place.toDate;
  return json;
}

// Counts and sums of what was left out, in all and by reason.
Json SkippedJson(const SkippedAmounts& skipped) {
  Json json{{"count", skipped.ImportTotal().count},
            {"sum", skipped.ImportTotal().sum},
            {"reasons", Json::object()}};
  for (const auto& [reason, total] : skipped.ByReason()) {
    json["reasons"][std::string(ReasonWord(reason))] = {{"count", total.count}, {"sum", total.sum}};
  }
  json["past_performance"] = skipped.PastTotal().count;
  if (!skipped.PastPerformanceEnd().empty()) json["past_performance_ended_at"] = skipped.PastPerformanceEnd();
  return json;
}

}  // namespace

std::string ImportOutcomeJson(const ImportOutcome& outcome) {
  Json json{{"result", ResultWord(outcome.result)},
            {"error_number", outcome.errorNumber},
            {"error_description", outcome.errorDescription},
            {"events", Json::array()},
            {"tables", Json::array()},
            {"incomplete", Json::array()},
            {"skipped", SkippedJson(outcome.skipped)},
            {"elapsed_ms", outcome.elapsedMilliseconds}};
  for (const ImportEvent& event : outcome.events) json["events"].push_back(EventJson(event));
  for (const plan_file::TableChange& table : outcome.tables) json["tables"].push_back(TableJson(table));
  for (const Omission& omission : outcome.incomplete.All())
    json["incomplete"].push_back(OmissionJson(omission));
  return JsonText(json);
}

}  // namespace krnqb::cli
