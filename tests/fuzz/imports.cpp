#include <array>

#include "fakes/dated_quickbooks.h"
#include "fakes/fixed_clock.h"
#include "fakes/import_texts.h"
#include "fakes/recording_observer.h"
#include "fuzz/input.h"
#include "fuzz/plan_promises.h"
#include "krnqb/qb_data_exchange.h"

// Whole imports. The input's first bytes are the options and the faults; then come answers, each a byte that
// chooses the request and a text that ends with a NUL. Requests that the input does not answer are answered
// by a small company.

namespace krnqb::fuzz {
namespace {

using fakes::Account;
using fakes::DatedQuickBooks;

// The requests an input may answer, and last the tables that are loaded into the plan before the import.
constexpr std::array<std::string_view, 17> questions = {"100", "101", "1",   "2",        "4",  "50",
                                                        "60",  "10",  "11",  "12",       "20", "21",
                                                        "300", "310", "320", "330 Bank", "330"};
constexpr std::size_t planTables = questions.size();

std::shared_ptr<DatedQuickBooks> SmallCompany(std::int16_t majorVersion) {
  using namespace fakes;  // NOLINT(google-build-using-namespace)
  auto quickBooks = std::make_shared<DatedQuickBooks>();
  quickBooks->majorVersion = majorVersion;
  auto& answers = quickBooks->answers;
  answers["100"] = HostAnswer({"1.0", "1.1"});
  answers["101"] = CompanyAnswer("January");
  answers["1"] = AccountAnswer("1", {Account("I-1", "Plants"), Account("I-2", "Tools")});
  answers["2"] = AccountAnswer("2", {Account("C-1", "Seeds"), Account("C-2", "Freight")});
  answers["4"] = AccountAnswer(
      "4", {Account("E-1", "Rent"), Account("E-2", "Utilities"), SubAccount("E-3", "Gas", "E-2")});
  answers["50"] = ItemAnswer(OneAccountItem("S-1", "I-1") + InventoryItem("S-2", "I-2", "C-1", "1.25"));
  answers["10"] =
      RecordAnswer("BillQueryRs", Element("BillRet", Transaction("T-1", "2002-01-05") +
                                                         ExpenseLine(AccountRef("E-3") + Amount("75.00"))));
  answers["20"] =
      RecordAnswer("InvoiceQueryRs",
                   Element("InvoiceRet", Transaction("T-2", "2002-01-06") +
                                             InvoiceLine(ItemRef("S-2") + Quantity("4") + Amount("40.00"))));
  answers["310"] = ReportAnswer(ReportRow("Rent", {"1.00", "2.00", "3.00"}));
  return quickBooks;
}

// Refuses one request.
class Processor : public fakes::DatedProcessor {
 public:
  Processor(std::shared_ptr<DatedQuickBooks> quickBooks, std::shared_ptr<int> untilRefusal)
      : DatedProcessor(std::move(quickBooks), std::make_shared<fakes::Journal>()),
        untilRefusal_(std::move(untilRefusal)) {}

  std::string ProcessRequest(std::string_view ticket, std::string_view request) override {
    if (--*untilRefusal_ == 0) throw Error(-2147220480, "the request is refused");
    return DatedProcessor::ProcessRequest(ticket, request);
  }

 private:
  std::shared_ptr<int> untilRefusal_;
};

class Factory : public RequestProcessorFactory {
 public:
  Factory(std::shared_ptr<DatedQuickBooks> quickBooks, std::shared_ptr<int> untilRefusal)
      : quickBooks_(std::move(quickBooks)), untilRefusal_(std::move(untilRefusal)) {}
  std::unique_ptr<RequestProcessor> Create() override {
    return std::make_unique<Processor>(quickBooks_, untilRefusal_);
  }

 private:
  std::shared_ptr<DatedQuickBooks> quickBooks_;
  std::shared_ptr<int> untilRefusal_;
};

// Fails in one use of its tables.
class Plan : public PlanObject {
 public:
  Plan(std::shared_ptr<MemoryPlan> plan, int untilFailure)
      : plan_(std::move(plan)), untilFailure_(untilFailure) {}
  bool OpenPlan(std::string_view planFile) override { return plan_->OpenPlan(planFile); }
  std::shared_ptr<PlanData> Data() override {
    if (--untilFailure_ == 0) throw Error(-2147220991, "the plan is locked");
    return plan_->Data();
  }

 private:
  std::shared_ptr<MemoryPlan> plan_;
  int untilFailure_;
};

ImportOptions ReadOptions(Input& input, QBKRNproduct product) {
  ImportOptions options;
  options.krnProduct = product;
  const std::size_t included = input.Below(8);
  options.includeExpenseAccounts = (included & 1U) != 0;
  options.includeIncomeAccounts = (included & 2U) != 0;
  options.includePastPerformance = (included & 4U) != 0;
  options.balancesImport = static_cast<QBKRN_BalancesImport>(input.Below(4));
  options.growthRateExpenses = input.Short();
  options.growthRateIncome = options.growthRateCogs = static_cast<std::int16_t>(input.Byte());
  options.period = {.krnStartingMonth = static_cast<std::int16_t>(input.Below(16)),
                    .krnStartingYear = input.Flag() ? input.Short() : std::int16_t{2003},
                    .startingMonth = static_cast<std::int16_t>(input.Below(14)),
                    .startingYear = input.Flag() ? input.Short() : std::int16_t{0}};
  return options;
}

// Keeps which events were raised. If it has options, sets them between the two passes.
class Sink : public EventSink {
 public:
  void XMLprocessing(Variant& /*oXML*/) override {
    betweenPasses = true;
    if (changedOptions) component->Options(*changedOptions);
  }
  void TableModified(std::string_view /*sTableID*/) override {}
  void AfterImport() override { afterImport = true; }
  void ProgressBarChange(std::int16_t PercentValue, std::string_view /*Description*/) override {
    Require(PercentValue >= 0 && PercentValue <= 100, "progress is in percent");
  }

  QBDataExchange* component = nullptr;
  std::optional<ImportOptions> changedOptions;
  bool betweenPasses = false;
  bool afterImport = false;
};

void ReadAnswers(Input& input, DatedQuickBooks& quickBooks, MemoryPlan& plan) {
  while (!input.Empty()) {
    const std::size_t question = input.Below(questions.size() + 1);
    std::string text = input.Text();
    if (question == planTables) {
      ErrorOf([&] { plan.Tables().Deserialize(text); });
    } else {
      quickBooks.answers[std::string(questions[question])] = std::move(text);
    }
  }
}

void Run(Input input) {
  const auto product = static_cast<QBKRNproduct>(1 + input.Below(3));
  const ImportOptions options = ReadOptions(input, product);
  const auto quickBooks = SmallCompany(static_cast<std::int16_t>(1 + input.Below(3)));
  const auto untilRefusal = std::make_shared<int>(input.Below(64));
  const auto untilFailure = static_cast<int>(input.Below(32));
  const auto plan = NewPlan(product);
  const auto observer = std::make_shared<fakes::RecordingObserver>();
  const auto sink = std::make_shared<Sink>();
  const bool repeated = input.Below(4) == 3;
  const bool pathGiven = input.Flag();
  if (input.Flag()) sink->changedOptions = ReadOptions(input, product);
  const bool repeatable = *untilRefusal == 0 && untilFailure == 0 && !sink->changedOptions;
  ReadAnswers(input, *quickBooks, *plan);

  OutsideWorld world;
  world.processors = std::make_shared<Factory>(quickBooks, untilRefusal);
  world.sinks = {sink};
  world.observer = observer;
  world.clock = std::make_shared<fakes::FixedClock>(LocalDateTime{2002, 1, 1, 9, 0, 0});
  QBDataExchange component(world);
  sink->component = &component;
  component.KRNPlanData(std::make_shared<Plan>(plan, untilFailure));
  component.Options(options);
  if (pathGiven) component.QBCompany("C:\\Companies\\Nursery.qbw");
  if (product == QBKRN_BRI) component.SelectedExpenses();

  const std::string textBefore = plan->Text();
  const plan_file::PlanContent before = ContentOf(plan->Tables().Document());
  const bool result = component.Go();
  RequireKnownErrors(observer->notices);
  RequireKnownError(component.ErrorNumber(), component.ErrorDescription());
  const bool included =
      options.includeExpenseAccounts || options.includeIncomeAccounts || options.includePastPerformance;
  Require(result || component.ErrorNumber() != 0, "a refused import has an error");
  Require(result || !sink->afterImport, "a refused import does not end as a complete one");
  Require(included || (result && plan->Text() == textBefore), "an import of nothing changes nothing");
  Require(!included || sink->changedOptions || sink->afterImport || component.ErrorNumber() != 0,
          "an import that does not reach its end has an error");
  Require(component.ErrorNumber() == 0 || !component.ErrorDescription().empty(),
          "an error has a description");
  if (!result && !sink->betweenPasses) {
    Require(plan->Text() == textBefore, "a refused import changes no plan");
  }
  RequirePlan(plan->Text());
  RequireWrittenCells(before, ContentOf(plan->Tables().Document()));

  // The next import with the same object, from the same company, writes the same.
  for (const std::string_view list : {"1", "2", "4"}) {
    if (!NamesStay(XmlElement::Parse(quickBooks->answers[std::string(list)]))) return;
  }
  if (!repeated || !repeatable || !sink->afterImport || component.ErrorNumber() != 0) return;
  const std::string textAfter = plan->Text();
  sink->afterImport = false;
  component.Options(options);
  Require(component.Go() && sink->afterImport, "an import can be repeated", component.ErrorDescription());
  RequireKnownErrors(observer->notices);
  Require(plan->Text() == textAfter, "an import that is repeated changes nothing",
          textAfter + "\n" + plan->Text());
}

}  // namespace
}  // namespace krnqb::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  krnqb::fuzz::Run({data, size});
  return 0;
}
