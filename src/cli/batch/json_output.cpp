#include "cli/batch/outputs.h"
#include "cli/console/json_text.h"

namespace krnqb::cli {
namespace {

Json TextOrNull(const std::string& text) {
  return text.empty() ? Json() : Json(text);
}

Json SumOrNull(const std::optional<ExactAmount>& sum) {
  return sum ? Json(sum->PlainText()) : Json();
}

// The time in the form of ISO 8601.
std::string MomentText(const WriteTime& time) {
  std::string text = TimeText(time) + 'Z';
  text.replace(text.find(' '), 1, "T");
  return text;
}

Json ImportJson(const ImportResultFile& import) {
  Json json{{"name", import.name},
            {"written", MomentText(import.written)},
            {"result", import.result},
            {"done", import.done},
            {"reason", TextOrNull(import.reason)},
            {"remedy", TextOrNull(import.remedy)},
            {"company", TextOrNull(import.companyName)},
            {"company_path", TextOrNull(import.companyPath)},
            {"plan", TextOrNull(import.plan)},
            {"period_from", TextOrNull(import.periodFrom)},
            {"rows_added", import.rowsAdded},
            {"cells_changed", import.cellsChanged},
            {"formulas_cleared", import.formulasCleared},
            {"left_out", import.amountsLeftOut},
            {"sum_left_out", SumOrNull(import.sumLeftOut)},
            {"elapsed_ms", import.milliseconds},
            {"warnings", Json::array()}};
  for (const ResultWarning& warning : import.warnings) json["warnings"].push_back(warning.code);
  return json;
}

}  // namespace

std::string OverviewJson(const BatchOverview& overview) {
  Json json{{"result", overview.NotDone() == 0 ? "done" : "incomplete"},
            {"folder", overview.folder},
            {"imports", Json::array()},
            {"totals",
             {{"imports", overview.imports.size()},
              {"done", overview.done},
              {"not_done", overview.NotDone()},
              {"results", Json::array()},
              {"rows_added", overview.rowsAdded},
              {"cells_changed", overview.cellsChanged},
              {"formulas_cleared", overview.formulasCleared},
              {"left_out", overview.amountsLeftOut},
              {"sum_left_out", SumOrNull(overview.sumLeftOut)},
              {"elapsed_ms", overview.milliseconds}}},
            {"warnings", Json::array()}};
  for (const ImportResultFile& import : overview.imports) json["imports"].push_back(ImportJson(import));
  for (const auto& [word, count] : overview.byResult)
    json["totals"]["results"].push_back({{"result", word}, {"count", count}});
  for (const WarningTotal& warning : overview.warnings) {
    json["warnings"].push_back(
        {{"code", warning.code}, {"imports", warning.imports}, {"names", warning.accounts}});
  }
  return JsonText(json);
}

}  // namespace krnqb::cli
