#include "cli/import/history_facts.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/console/option_values.h"
#include "plan_file/views/row_figures.h"
#include "support/number_text.h"

namespace krnqb::cli {
namespace {

// The first of the imported months, with the defaults that the component takes.
YearMonth ImportStart(const PeriodFields& period, const YearMonth& planStart) {
  return {
      .year = period.startingYear != 0 ? period.startingYear : static_cast<std::int16_t>(planStart.year - 1),
      .month = period.startingMonth != 0 ? period.startingMonth : planStart.month};
}

std::vector<std::string> OptionTexts(const ImportCommand& command, const ImportOptions& imported) {
  std::vector<std::string> texts;
  const auto addFlag = [&](const char* option, bool given) {
    if (given) texts.emplace_back(option);
  };
  const auto addValue = [&](const char* option, const auto& value) {
    texts.push_back(fmt::format("{} {}", option, value));
  };
  if (command.companyFile && !command.replayFile) addValue("--company", *command.companyFile);
  if (command.quickBooks && command.quickBooks->empty()) texts.emplace_back("--quickbooks");
  if (command.quickBooks && !command.quickBooks->empty()) addValue("--quickbooks", *command.quickBooks);
  if (command.replayFile) addValue("--replay", *command.replayFile);
  addFlag("--expenses", imported.includeExpenseAccounts);
  addFlag("--income", imported.includeIncomeAccounts);
  addFlag("--past-performance", imported.includePastPerformance);
  addValue("--balances", BalancesName(imported.balancesImport));
  if (command.amountsFrom)
    addValue("--amounts-from", *command.amountsFrom == AmountsPath::Reports ? "reports" : "transactions");
  if (imported.growthRateIncome != 0) addValue("--growth-income", imported.growthRateIncome);
  if (imported.growthRateCogs != 0) addValue("--growth-cogs", imported.growthRateCogs);
  if (imported.growthRateExpenses != 0) addValue("--growth-expenses", imported.growthRateExpenses);
  if (command.fiscalMonth) addValue("--fiscal-month", *command.fiscalMonth);
  for (const std::string& name : command.selectedExpenses) addValue("--select-expense", name);
  addFlag("--select-all-expenses", command.selectAllExpenses);
  addFlag("--accept-incomplete", command.acceptIncomplete);
  addFlag("--strict", command.strict);
  return texts;
}

}  // namespace

plan_file::ImportFacts HistoryFacts(const ImportSettings& settings, const ImportOptions& imported) {
  const YearMonth start = ImportStart(imported.period, settings.planStart);
  plan_file::ImportFacts facts;
  facts.product = plan_file::ProductText(settings.product);
  facts.planStart = plan_file::PlanStartText(settings.planStart);
  facts.periodFrom = plan_file::PlanStartText(start);
  facts.periodTo = plan_file::PlanStartText(TwelveMonths(start).Last());
  facts.options = OptionTexts(settings.options, imported);
  return facts;
}

void KeepRows(plan_file::ImportFacts& facts, const plan_file::PlanContent& written, QBKRNproduct product,
              QBKRN_BalancesImport balances) {
  const auto source = balances == BalImport_Planned ? plan_file::FigureSource::GrowthFormulas
                                                    : plan_file::FigureSource::ActualCells;
  facts.rows.emplace();
  for (const plan_file::RowFigures& row : plan_file::RowFiguresOf(written, product, source)) {
    plan_file::WrittenRow kept{
        .block = std::string(GroupBlockId(row.group, product, plan_file::BlockKind::Planned)),
        .row = row.row,
        .name = row.name};
    for (const std::optional<double>& month : row.months) {
      kept.months.push_back(month ? GeneralNumberText(*month) : std::string());
    }
    const bool anyAmount =
        std::ranges::any_of(row.months, [](const auto& month) { return month.has_value(); });
    if (anyAmount) facts.rows->push_back(std::move(kept));
  }
}

void CountChanges(plan_file::ImportFacts& facts, const std::vector<plan_file::TableChange>& tables) noexcept {
  for (const plan_file::TableChange& table : tables) {
    facts.rowsAdded += table.rowsAdded;
    facts.rowsRemoved += table.rowsRemoved;
    facts.cellsChanged += table.cellsChanged;
    facts.formulasCleared += table.formulasCleared;
  }
}

}  // namespace krnqb::cli
