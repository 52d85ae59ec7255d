// usage: krnqb_import_events RECORDING PLAN BALANCES
//
// Imports from a recording into a copy of a plan that is never saved, with the options of record_imports.sh,
// and prints the events raised, one per line.
#include <fmt/format.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <span>
#include <string_view>

#include "krnqb/qb_data_exchange.h"
#include "plan_file/file.h"
#include "qbxml/exchange_replaying.h"

namespace {

using namespace krnqb;

class PrintingSink final : public EventSink {
 public:
  void XMLprocessing(Variant& /*oXML*/) override { std::puts("XMLprocessing Nothing"); }
  void TableModified(std::string_view sTableID) override { fmt::print("TableModified {}\n", sTableID); }
  void AfterImport() override { std::puts("AfterImport"); }
  void ProgressBarChange(std::int16_t PercentValue, std::string_view Description) override {
    fmt::print("ProgressBarChange {} {}\n", PercentValue, Description);
  }
};

constexpr std::int16_t growthOfIncome = 10;
constexpr std::int16_t growthOfCosts = 5;
constexpr std::int16_t growthOfExpenses = 3;

QBKRN_BalancesImport BalancesNamed(std::string_view name) {
  constexpr std::array<std::string_view, 4> names{"none", "planned", "actual", "all"};
  int number = 0;
  while (names.at(static_cast<std::size_t>(number)) != name) ++number;
  return static_cast<QBKRN_BalancesImport>(number);
}

void Configure(QBDataExchange& exchange, const std::shared_ptr<plan_file::PlanFile>& plan,
               QBKRN_BalancesImport balances) {
  exchange.QBCompany("C:\\Books\\nursery.qbw");
  exchange.KRNPlanData(plan);
  exchange.KRNProduct(plan->Product().value());
  exchange.IncludeExpenseAccounts(true);
  exchange.IncludeIncomeAccounts(true);
  exchange.IncludePastPerformance(true);
  exchange.BalancesImport(balances);
  if (balances != BalImport_None) {
    exchange.GrowthRateIncome(growthOfIncome);
    exchange.GrowthRateCOGS(growthOfCosts);
    exchange.GrowthRateExpenses(growthOfExpenses);
  }
  exchange.KRNStartingYear(plan->Start().value().year);
  exchange.KRNStartingMonth(plan->Start().value().month);
  if (const XmlElement selection = exchange.SelectedExpenses()) {
    for (XmlElement account : selection.Children()) account.SetAttribute("selected", "True");
    exchange.SelectedExpenses(selection);
  }
}

bool ImportPrinting(const char* recordingPath, const char* planPath, std::string_view balances) {
  auto recording = std::make_unique<std::ifstream>(recordingPath, std::ios::binary);
  QBDataExchange exchange({.processors = ReplayingProcessors(std::move(recording), recordingPath),
                           .sinks = {std::make_shared<PrintingSink>()},
                           .observer = nullptr,
                           .userInterface = nullptr,
                           .registry = nullptr,
                           .clock = nullptr});
  Configure(exchange, plan_file::PlanFile::Open(planPath), BalancesNamed(balances));
  return exchange.Go() && exchange.ErrorNumber() == 0;
}

}  // namespace

int main(int count, char** words) {
  const std::span arguments(words, static_cast<std::size_t>(count));
  if (count != 4) return 2;
  try {
    return ImportPrinting(arguments[1], arguments[2], arguments[3]) ? 0 : 1;
  } catch (const std::exception& error) {
    fmt::print(stderr, "{}\n", error.what());
    return 1;
  }
}
