#include "cli/report/settings.h"

#include <fmt/format.h>

#include "cli/console/option_values.h"
#include "cli/report/amounts.h"
#include "files/reading.h"
#include "html/elements.h"
#include "html/table.h"
#include "plan_file/attributes.h"
#include "plan_file/headings.h"
#include "plan_file/history/digest.h"
#include "support/date.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

class FactList {
 public:
  void Add(const std::string& name, const std::string& value) {
    if (!value.empty()) facts_.push_back({name, html::Text(value)});
  }
  void AddName(const std::string& name, const std::optional<std::string>& value) {
    if (value && !value->empty()) facts_.push_back({name, html::Name(*value)});
  }
  void AddNumber(const std::string& name, const std::optional<std::int16_t>& number) {
    if (number) Add(name, fmt::format("{} percent", *number));
  }
  html::Fragment Shown() const { return html::Facts(facts_); }

 private:
  std::vector<html::Fact> facts_;
};

std::string YesOrNo(bool yes) {
  return yes ? "yes" : "no";
}

std::string AmountsFrom(const ImportBasis& basis) {
  if (!basis.company || basis.options.balances == BalImport_None) return {};
  if (basis.company->majorVersion == 1) return "transactions";
  return basis.company->majorVersion == 2 ? "reports" : "";
}

std::string Seconds(std::chrono::milliseconds time) {
  constexpr double perSecond = 1000;
  return fmt::format("{:.3f} s", static_cast<double>(time.count()) / perSecond);
}

// A file that cannot be read has no digest; the import has not failed for that.
std::string DigestText(const std::string& file) {
  try {
    return plan_file::DigestOf(files::ReadFile(PathFrom(file), "cannot read the file").bytes);
  } catch (const Error&) {
    return {};
  }
}

}  // namespace

html::Fragment Settings(const ImportBasis& basis) {
  const ImportCommand& options = basis.options;
  FactList facts;
  if (basis.product) facts.Add("Product of the plan", std::string(plan_file::ProductText(*basis.product)));
  if (basis.planStart) facts.Add("The plan begins in", plan_file::MonthOfYear(*basis.planStart));
  if (basis.importStart) facts.Add("Imported months", plan_file::TwelveMonthsText(*basis.importStart));
  facts.Add("Expense accounts", YesOrNo(options.expenses));
  facts.Add("Income accounts", YesOrNo(options.income));
  facts.Add("Past performance", YesOrNo(options.pastPerformance));
  facts.Add("Monthly amounts", std::string(BalancesName(options.balances)));
  facts.Add("Amounts from", AmountsFrom(basis));
  if (options.fiscalMonth)
    facts.Add("First fiscal month", std::string(EnglishMonthName(*options.fiscalMonth)));
  facts.AddNumber("Growth of sales", options.growthRateIncome);
  facts.AddNumber("Growth of the cost of goods", options.growthRateCogs);
  facts.AddNumber("Growth of expenses", options.growthRateExpenses);
  for (const std::string& name : options.selectedExpenses) facts.AddName("Selected expense account", name);
  if (options.selectAllExpenses) facts.Add("Selected expense accounts", "all");
  if (options.acceptIncomplete) facts.Add("Incomplete imports", "accepted");
  if (options.strict) facts.Add("Left-out amounts and warnings", "make the import incomplete");
  if (options.dryRun) facts.Add("Dry run", "yes");
  return html::Heading(3, "Settings") + facts.Shown();
}

html::Fragment Files(const ImportOutcome& outcome) {
  const ImportBasis& basis = BasisOf(outcome);
  const ImportCommand& options = basis.options;
  FactList facts;
  if (basis.company) {
    facts.AddName("Company", basis.company->name);
    facts.AddName("Company file", basis.company->path);
    facts.Add("qbXML version", basis.company->processorVersion);
  }
  facts.AddName("Replayed recording", options.replayFile);
  facts.AddName("Plan", options.planFile);
  facts.Add("SHA-256 of the plan", DigestText(options.planFile));
  if (!outcome.backupFile.empty()) {
    facts.AddName("The plan's previous version", outcome.backupFile);
    facts.Add("SHA-256 of that version", DigestText(outcome.backupFile));
  }
  if (outcome.historyNumber)
    facts.Add("Number of that version in the history", std::to_string(*outcome.historyNumber));
  facts.AddName("Ledger", options.ledgerFile);
  facts.AddName("Journal", options.journalFile);
  facts.AddName("Recording", options.recordFile);
  return html::Heading(3, "Files") + facts.Shown();
}

html::Fragment Timings(const ImportOutcome& outcome, const ImportTimes& times) {
  html::Table table{.caption = "How long each step took",
                    .columns = {{"Step", html::Alignment::Text}, {"Events"}, {"Time"}},
                    .rows = {}};
  for (const TimedStep& step : times.steps) {
    table.rows.push_back(
        {.heading = {html::Text(step.name.substr(0, step.name.find_last_not_of('.') + 1))},
         .cells = {{html::Text(std::to_string(step.events))}, {html::Text(Seconds(step.time))}}});
  }
  const std::string whole =
      fmt::format("The import took {}: {} waiting for the answers to {}. It raised {}.",
                  Seconds(std::chrono::milliseconds(outcome.elapsedMilliseconds)), Seconds(times.answering),
                  Counted(times.requests, "request", "requests"), Counted(times.events, "event", "events"));
  return html::Heading(3, "Timings") + html::Paragraph(whole) + html::TableRegion(table);
}

}  // namespace krnqb::cli
