#include "cli/explain/json_output.h"

#include <cmath>

#include "cli/console/decimal_text.h"
#include "cli/console/json_text.h"
#include "cli/explain/story.h"
#include "cli/explain/words.h"
#include "cli/import/notices/skipped_amounts.h"
#include "plan_file/attributes.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

using ledger::LedgerFile;

std::string_view PlanStateWord(PlanState state) {
  switch (state) {
    case PlanState::Same:
      return "same";
    case PlanState::NotWritten:
      return "not-written";
    case PlanState::Changed:
      return "changed";
    case PlanState::Missing:
      break;
  }
  return "missing";
}

Json TextOrNull(const std::string& text) {
  return text.empty() ? Json() : Json(text);
}

// An amount out of the range of a double is unknown.
Json AmountJson(double amount) {
  return std::isfinite(amount) ? Json(DecimalText(amount)) : Json();
}

Json PeriodOrNull(const std::optional<std::int16_t>& period) {
  return period ? Json(*period) : Json();
}

Json Head(const LedgerFile& ledger, PlanState plan) {
  const ledger::LedgerFacts& facts = ledger.Facts();
  return {{"result", "done"},
          {"ledger", TextOfPath(ledger.Path())},
          {"when", facts.when},
          {"plan", {{"path", facts.plan}, {"digest", facts.planDigest}, {"state", PlanStateWord(plan)}}},
          {"company", {{"path", TextOrNull(facts.company)}, {"name", TextOrNull(facts.companyName)}}},
          {"period", {{"from", facts.periodFrom}, {"to", facts.periodTo}}}};
}

Json CellJson(const ledger::LedgerCell& cell) {
  return {{"table", cell.table},
          {"title", PlaceText(cell)},
          {"block", cell.block},
          {"row", cell.rowNumber},
          {"name", cell.row},
          {"column", cell.column},
          {"content", CellContentWord(cell.content)},
          {"text", cell.text}};
}

Json CellsJson(const std::vector<ledger::LedgerCell>& cells) {
  Json json = Json::array();
  for (const ledger::LedgerCell& cell : cells) json.push_back(CellJson(cell));
  return json;
}

Json BookingJson(const ledger::LedgerBooking& booking) {
  Json json{{"rule", BookingRuleWord(booking.rule)},
            {"amount", AmountJson(booking.amount)},
            {"text", TextOrNull(booking.text)},
            {"account", TextOrNull(booking.account)},
            {"account_name", TextOrNull(booking.accountName)}};
  if (booking.quantity) json["quantity"] = *booking.quantity;
  if (booking.averageCost) json["average_cost"] = *booking.averageCost;
  if (booking.billedAgain) json["billed_again"] = true;
  if (!booking.fromDate.empty()) json["from"] = booking.fromDate;
  if (!booking.toDate.empty()) json["to"] = booking.toDate;
  return json;
}

Json SumJson(const SumStory& story);

Json StoryLineJson(const StoryLine& line) {
  Json json{{"kind", SourceText(line.booking, line.document)}};
  if (line.document) {
    json["transaction"] = TextOrNull(line.document->transactionId);
    json["date"] = TextOrNull(line.document->date);
    json["number"] = TextOrNull(line.document->number);
    json["name"] = TextOrNull(line.document->party);
  }
  if (line.line) json["line"] = TextOrNull(line.line->lineId);
  json.update(BookingJson(line.booking));
  json["replaced"] = line.replaced;
  if (!line.months.empty()) {
    json["months"] = Json::array();
    for (const SumStory& month : line.months) json["months"].push_back(SumJson(month));
  }
  return json;
}

Json SumJson(const SumStory& story) {
  Json json{{"group", GroupWord(story.slot.group)}, {"name", story.slot.name},
            {"number", story.slot.number},          {"subtracted", story.subtracted},
            {"sum", AmountJson(story.sum)},         {"lines", Json::array()}};
  for (const StoryLine& line : story.lines) json["lines"].push_back(StoryLineJson(line));
  return json;
}

Json FigureJson(const LedgerFile& ledger, const ledger::Figure& figure) {
  const auto month = MonthOfFigure(ledger.Facts(), figure.past, figure.number);
  Json json{{"month", month ? Json(plan_file::PlanStartText(*month)) : Json()},
            {"past_period", figure.past ? Json(figure.number) : Json()},
            {"period", PeriodText(ledger.Facts(), figure.past, figure.number)},
            {"amount", AmountJson(figure.amount)},
            {"cells", CellsJson(figure.cells)},
            {"sums", Json::array()}};
  for (const SumStory& story : StoryOf(ledger, figure)) json["sums"].push_back(SumJson(story));
  return json;
}

Json FateJson(const LineFate& fate) {
  Json json{{"line", TextOrNull(fate.line.lineId)},
            {"element", fate.line.element},
            {"text", TextOrNull(fate.line.amount)},
            {"account", TextOrNull(fate.line.account)},
            {"account_name", TextOrNull(fate.line.accountName)},
            {"item", TextOrNull(fate.line.item)},
            {"item_name", TextOrNull(fate.line.itemName)},
            {"booked", Json::array()},
            {"left_out", Json::array()},
            {"nothing", TextOrNull(WhyNothing(fate))}};
  for (const BookedAmount& booked : fate.booked) {
    Json booking = BookingJson(booked.booking);
    booking["group"] = GroupWord(booked.slot.group);
    booking["top_level_account"] = booked.slot.name;
    booking["number"] = booked.slot.number;
    booking["replaced"] = booked.replaced;
    booking["cells"] = CellsJson(booked.cells);
    booking["in_no_cell"] = TextOrNull(WhyInNoCell(booked));
    json["booked"].push_back(booking);
  }
  for (const ledger::LedgerOmission& omission : fate.omissions) {
    json["left_out"].push_back(
        {{"reason", ReasonWord(omission.reason)}, {"meaning", MeaningWord(omission.kind)}});
  }
  return json;
}

}  // namespace

std::string ExplanationJson(const LedgerFile& ledger, PlanState plan,
                            const std::vector<ledger::RowFigures>& rows) {
  Json json = Head(ledger, plan);
  json["rows"] = Json::array();
  for (const ledger::RowFigures& row : rows) {
    Json figures = Json::array();
    for (const ledger::Figure& figure : row.figures) figures.push_back(FigureJson(ledger, figure));
    json["rows"].push_back(
        {{"name", row.name}, {"figures", figures}, {"growth_rates", CellsJson(row.rates)}});
  }
  return JsonText(json);
}

std::string ExplanationJson(const LedgerFile& ledger, PlanState plan,
                            const std::vector<TransactionFate>& fates) {
  Json json = Head(ledger, plan);
  json["transactions"] = Json::array();
  for (const TransactionFate& fate : fates) {
    const ledger::LedgerDocument& document = fate.document;
    Json lines = Json::array();
    for (const LineFate& line : fate.lines) lines.push_back(FateJson(line));
    json["transactions"].push_back({{"transaction", TextOrNull(document.transactionId)},
                                    {"kind", KindText(document.request)},
                                    {"date", TextOrNull(document.date)},
                                    {"number", TextOrNull(document.number)},
                                    {"name", TextOrNull(document.party)},
                                    {"past_period", PeriodOrNull(document.pastPeriod)},
                                    {"lines", lines}});
  }
  return JsonText(json);
}

}  // namespace krnqb::cli
