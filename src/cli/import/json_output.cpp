#include "cli/import/json_output.h"

#include <cmath>

#include "cli/console/changes_json.h"
#include "cli/console/decimal_text.h"
#include "cli/console/json_text.h"
#include "cli/console/option_values.h"
#include "cli/import/omissions.h"
#include "cli/import/skipped_amounts.h"
#include "cli/import/warning_advice.h"
#include "support/date.h"

namespace krnqb::cli {
namespace {

template <typename Value>
Json OrNull(const std::optional<Value>& value) {
  return value ? Json(*value) : Json();
}

Json OrNull(const std::optional<YearMonth>& month) {
  return month ? Json(plan_file::PlanStartText(*month)) : Json();
}

Json TextOrNull(const std::string& text) {
  return text.empty() ? Json() : Json(text);
}

Json AmountsFromJson(const ImportBasis& basis) {
  const std::int16_t version = basis.company ? basis.company->majorVersion : std::int16_t{0};
  if (version == 1) return "transactions";
  return version == 2 ? Json("reports") : Json();
}

Json SettingsJson(const ImportBasis& basis) {
  const ImportCommand& options = basis.options;
  return {{"product", basis.product ? Json(plan_file::ProductText(*basis.product)) : Json()},
          {"plan_start", OrNull(basis.planStart)},
          {"import_start", OrNull(basis.importStart)},
          {"fiscal_month", OrNull(options.fiscalMonth)},
          {"expenses", options.expenses},
          {"income", options.income},
          {"past_performance", options.pastPerformance},
          {"balances", BalancesName(options.balances)},
          {"amounts_from", AmountsFromJson(basis)},
          {"growth_income", OrNull(options.growthRateIncome)},
          {"growth_cogs", OrNull(options.growthRateCogs)},
          {"growth_expenses", OrNull(options.growthRateExpenses)},
          {"select_expenses", options.selectedExpenses},
          {"select_all_expenses", options.selectAllExpenses},
          {"accept_incomplete", options.acceptIncomplete},
          {"strict", options.strict},
          {"dry_run", options.dryRun}};
}

// The company with its path, name and qbXML version.
Json CompanyJson(const ImportBasis& basis) {
  if (!basis.company) return {};
  const ImportCompany& company = *basis.company;
  return {{"path", TextOrNull(company.path)},
          {"name", TextOrNull(company.name)},
          {"processor", company.processorVersion}};
}

// The first and the last day of the twelve months.
Json PeriodJson(const ImportBasis& basis) {
  if (!basis.importStart) return {};
  const YearMonth first = *basis.importStart;
  const YearMonth last = TwelveMonths(first).Last();
  constexpr std::int16_t lastYear = 9999;
  if (last.year > lastYear) return {};  // its days are not valid dates
  return {{"from", DateText(first.year, first.month, 1)},
          {"to", DateText(last.year, last.month, DaysInCalendarMonth(last.month, last.year))}};
}

// The files of the import as they were typed.
Json PathsJson(const ImportBasis& basis) {
  const ImportCommand& options = basis.options;
  return {{"plan", options.planFile},
          {"journal", OrNull(options.journalFile)},
          {"ledger", OrNull(options.ledgerFile)},
          {"report", OrNull(options.reportFile)},
          {"recording", OrNull(options.recordFile)},
          {"replay", OrNull(options.replayFile)}};
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

Json WarningJson(const ImportWarning& warning) {
  return {{"code", warning.code},
          {"message", warning.message},
          {"accounts", Json::array()},
          {"amounts", Json::array()}};
}

Json WarningJson(const Warning& warning) {
  Json names = Json::array();
  Json amounts = Json::array();
  for (const Finding& finding : warning.findings) {
    if (!finding.name.empty()) names.push_back(finding.name);
    if (finding.amount && std::isfinite(*finding.amount)) amounts.push_back(DecimalText(*finding.amount));
  }
  return {{"code", WarningWord(warning.code)},
          {"message", WarningAdvice(warning)},
          {"accounts", names},
          {"amounts", amounts}};
}

// A sum beyond the range of a double is unknown.
Json SumJson(const ImportReport::Total& total) {
  return total.sum ? Json(DecimalText(*total.sum)) : Json();
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
  const std::optional<ImportBasis>& basis = outcome.basis;
  Json json{{"result", ResultWord(outcome.result)},
            {"error_number", outcome.errorNumber},
            {"error_description", outcome.errorDescription},
            {"remedy", outcome.remedy},
            {"settings", basis ? SettingsJson(*basis) : Json()},
            {"company", basis ? CompanyJson(*basis) : Json()},
            {"period", basis ? PeriodJson(*basis) : Json()},
            {"paths", basis ? PathsJson(*basis) : Json()},
            {"backup", TextOrNull(outcome.backupFile)},
            {"history", OrNull(outcome.historyNumber)},
            {"warnings", Json::array()},
            {"events", Json::array()},
            {"tables", Json::array()},
            {"changes", ChangesJson(outcome.tables, basis ? basis->planStart : std::nullopt)},
            {"incomplete", Json::array()},
            {"skipped", SkippedJson(outcome.report)},
            {"elapsed_ms", outcome.elapsedMilliseconds}};
  for (const ImportWarning& warning : outcome.warnings) json["warnings"].push_back(WarningJson(warning));
  for (const Warning& warning : outcome.report.Warnings()) json["warnings"].push_back(WarningJson(warning));
  for (const ImportEvent& event : outcome.events) json["events"].push_back(EventJson(event));
  for (const plan_file::TableChange& table : outcome.tables) json["tables"].push_back(TableJson(table));
  for (const Notice& omission : outcome.report.Missing())
    json["incomplete"].push_back(OmissionJson(omission));
  return JsonText(json);
}

}  // namespace krnqb::cli
