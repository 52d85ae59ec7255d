#include "cli/import/json_output.h"

#include "cli/console/json_text.h"
#include "cli/import/omissions.h"
#include "cli/import/skipped_amounts.h"

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

// Counts and sums of the left-out amounts, in total and by reason.
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
  return JsonText(json);
}

}  // namespace krnqb::cli
