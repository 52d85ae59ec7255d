// A miniature planning program: it holds a plan, supplies QuickBooks, and imports the shop's accounts into
// the plan:
//
//     krnqb_host           imports
//     krnqb_host closed    shows what happens if no company is open in QuickBooks
//
// Exit code 0: imported. Exit code 1: failed.

#include <krnqb/error.h>
#include <krnqb/import_report.h>
#include <krnqb/qb_data_exchange.h>

#include <iostream>
#include <memory>

#include "canned_quickbooks.h"
#include "memory_plan.h"

namespace {

constexpr std::string_view plannedExpenses = "20000000000000000000000000000600";
constexpr std::string_view actualExpenses = "21000000000000000000000000000600";

class PrintingSink : public krnqb::EventSink {
 public:
  void XMLprocessing(krnqb::Variant& /*oXML*/) override { std::cout << "second pass\n"; }
  void TableModified(std::string_view /*sTableID*/) override {}
  void AfterImport() override { std::cout << "import finished\n"; }
  void ProgressBarChange(std::int16_t PercentValue, std::string_view Description) override {
    std::cout << PercentValue << " % " << Description << "\n";
  }
};

std::shared_ptr<MemoryPlan> NewPlan() {
  auto plan = std::make_shared<MemoryPlan>();
  plan->AddTable(plannedExpenses, R"(<tableitem id="20000000000000000000000000000600"><tableblocks>
<block id="db_income_range_cat3" startrow="5">
<row><c>Rent</c><c>0</c><c>800</c><c>800</c></row>
<row><c>Depreciation</c><c>0</c><c>0</c><c>0</c></row>
<row><c>Total</c><c>*null*</c><c>=SUM(C5:C6)</c><c>=SUM(D5:D6)</c></row>
</block></tableblocks></tableitem>)");
  plan->AddTable(actualExpenses, R"(<tableitem id="21000000000000000000000000000600"><tableblocks>
<block id="db_income_range_cat3_actual" startrow="5">
<row><c>Rent</c><c>0</c><c>0</c></row>
<row><c>Depreciation</c><c>0</c><c>0</c></row>
<row><c>Total</c><c>=SUM(B5:B6)</c><c>=SUM(C5:C6)</c></row>
</block></tableblocks></tableitem>)");
  return plan;
}

void PrintExpenseRows(const MemoryPlan& plan) {
  for (const std::string& name : plan.RowNames(plannedExpenses, "db_income_range_cat3")) {
    std::cout << "  " << name << "\n";
  }
}

void SetOptions(krnqb::QBDataExchange& exchange) {
  krnqb::ImportOptions options;
  options.includeExpenseAccounts = true;
  options.krnProduct = krnqb::QBKRN_ALD;
  options.period.krnStartingMonth = 4;
  options.period.krnStartingYear = 2003;
  exchange.Options(options);
}

bool ImportInto(const std::shared_ptr<MemoryPlan>& plan, bool companyOpen) {
  krnqb::OutsideWorld world;
  world.processors = std::make_shared<CannedQuickBooks>(companyOpen);
  world.sinks.push_back(std::make_shared<PrintingSink>());
  const auto report = std::make_shared<krnqb::ImportReport>();
  world.observer = report;
  krnqb::QBDataExchange exchange(world);
  exchange.KRNPlanData(plan);
  SetOptions(exchange);

  // Go returns true even if an error ended the import: the error is in the pair.
  if (!exchange.Go() || exchange.ErrorNumber() != 0) {
    std::cout << "import failed: " << exchange.ErrorDescription() << "\n";
    return false;
  }
  std::cout << (report->Complete() ? "everything was read\n" : "something could not be read\n");
  std::cout << "the fiscal year begins in month " << exchange.QBStartingMonth() << "\n";
  // The component shares the plan until it lets go of it, or ends.
  exchange.KRNPlanData({});
  // Some operations throw instead; this one without a plan.
  try {
    exchange.KRNOpenPlan("another.kpf");
  } catch (const krnqb::Error& error) {
    std::cout << "opening another plan failed: " << error.Description() << " (error " << error.Number()
              << ")\n";
  }
  return true;
}

}  // namespace

int main(int count, char** arguments) {
  const bool companyOpen = count < 2 || std::string_view(arguments[1]) != "closed";
  const auto plan = NewPlan();
  std::cout << "expense rows before the import\n";
  PrintExpenseRows(*plan);

  if (!ImportInto(plan, companyOpen)) return 1;
  std::cout << "expense rows after the import\n";
  PrintExpenseRows(*plan);
  return 0;
}
