#include "faults/import_world.h"

#include <fmt/format.h>

#include <new>
#include <stdexcept>

#include "fakes/amount_tables.h"
#include "fakes/answer_texts.h"
#include "fakes/fixed_clock.h"
#include "fakes/import_texts.h"
#include "fakes/past_performance_table.h"
#include "fakes/plan.h"
#include "fakes/plan_texts.h"
#include "fakes/request_processor.h"

namespace krnqb::faults {
namespace {

using Answers = std::map<std::string, std::string, std::less<>>;

Answers CompanyAnswers() {
  using namespace fakes;
  Answers answers;
  answers["100"] = HostAnswer({"1.0", "1.1", "2.0"});
  answers["101"] = CompanyAnswer("January");
  const std::string accounts[] = {Account("E-1", "Rent of the glasshouses"), Account("E-2", "Utilities"),
                                  SubAccount("E-3", "Gas", "E-2")};
  answers["4"] = AccountAnswer("4", {accounts[0], accounts[1], accounts[2]});
  answers["1"] = AccountAnswer("1", {Account("I-1", "Plants"), Account("I-2", "Tools & more, all seasons")});
  answers["2"] = AccountAnswer("2", {Account("C-1", "Seeds"), Account("C-2", "Freight")});
  answers["1"].replace(answers["1"].find('&'), 1, "&amp;");
  answers["50"] = ItemAnswer(OneAccountItem("T-1", "E-3") + InventoryItem("T-2", "I-1", "C-1", "2.50"));
  const std::string account = Element("AccountType", "Bank") + Element("TotalBalance", "1250.75");
  answers["60"] = RecordAnswer("AccountQueryRs",
                               Element("AccountRet", Element("ListID", "B-1") + Element("Name", "Checking") +
                                                         Element("Sublevel", "0") + account));
  answers["10"] = RecordAnswer(
      "BillQueryRs",
      Element("BillRet", Transaction("B1", "2002-01-05") +
                             ExpenseLine(AccountRef("E-1") + Amount("1100.25") + CustomerRef("K-1")) +
                             ItemLine(ItemRef("T-1") + Amount("33.50"))));
  answers["11"] =
      RecordAnswer("CheckQueryRs", Element("CheckRet", Transaction("K1", "2002-01-06") +
                                                           ExpenseLine(AccountRef("E-3") + Amount("41.10"))));
  answers["20"] =
      RecordAnswer("InvoiceQueryRs",
                   Element("InvoiceRet", Transaction("V1", "2002-01-07") + CustomerRef("K-1") +
                                             InvoiceLine(ItemRef("T-2") + Quantity("3") + Amount("75.00")) +
                                             InvoiceLine(Amount("1100.25"))));
  answers["21"] = RecordAnswer(
      "SalesReceiptQueryRs",
      Element("SalesReceiptRet", Transaction("S1", "2002-01-08") +
                                     SalesReceiptLine(ItemRef("T-2") + Quantity("1") + Amount("25.00"))));
  answers["300"] =
      ReportAnswer(ReportRow("Plants", {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12"}));
  answers["310"] = ReportAnswer(
      ReportRow("Rent of the glasshouses", {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12"}));
  answers["320"] =
      ReportAnswer(ReportRow("Seeds", {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", "11", "12"}));
  answers["?"] = ReportAnswer(ReportRow("Checking", {"812.40"}));
  return answers;
}

PlanTables NewPlan() {
  using namespace fakes;
  PlanTables tables;
  const auto put = [&](const char* set, const char* number, const std::string& blocks) {
    const std::string id = TableId(set, number);
    tables[id] = TableText(id, blocks);
  };
  const auto planned = [](std::string_view id, std::string_view first) {
    return AmountBlock(id, "startrow=\"5\"",
                       WideRow(first, 13, "0") + WideRow("Rent of the glasshouses", 13, "0") +
                           WideRow("Depreciation", 13, "0") + WideRow("Total", 13, "0"));
  };
  put("20", "0600", "<tableblocks>" + planned("db_income_range_cat3", "Wages") + "</tableblocks>");
  put("21", "0600", "<tableblocks>" + planned("db_income_range_cat3_actual", "Wages") + "</tableblocks>");
  put("20", "2000", "<tableblocks>" + planned("db_contributionmargin_cat2", "Wages") + "</tableblocks>");
  put("21", "2000",
      "<tableblocks>" + planned("db_contributionmargin_cat2_actual", "Wages") + "</tableblocks>");
  put("20", "0400",
      "<tableblocks>" + planned("db_sales_values_sales", "Shop") + planned("db_sales_values_costs", "Goods") +
          "</tableblocks>");
  put("21", "0400",
      "<tableblocks>" + planned("db_sales_values_sales_actual", "Shop") +
          planned("db_sales_values_costs_actual", "Goods") + "</tableblocks>");
  tables[TableId("20", "0800")] = PastPerformanceTable();
  return tables;
}

std::string TextFor(Fault fault) {
  switch (fault) {
    case Fault::ReturnsNonsense:
      return "<QBXML><QBXMLMsgsRs><AccountQueryRs requestID=\"4\">";
    case Fault::ReportsAnError:
      return fakes::StatusAnswer("AccountQueryRs", "3120");
    default:
      return {};
  }
}

class Processor final : public RequestProcessor {
 public:
  Processor(OutsideCalls& calls, const Answers& answers, int& open, std::int16_t version)
      : calls_(calls), answers_(answers), open_(open), version_(version) {
    ++open_;
  }
  ~Processor() override { --open_; }
  Processor(const Processor&) = delete;
  Processor& operator=(const Processor&) = delete;

  std::string ProcessRequest(std::string_view /*ticket*/, std::string_view request) override {
    if (const auto fault = calls_.CallForResult()) return TextFor(*fault);
    const auto answer = answers_.find(fakes::RequestNumber(request));
    return answer == answers_.end() ? "<QBXML><QBXMLMsgsRs/></QBXML>" : answer->second;
  }
  void OpenConnection(std::string_view /*identifier*/, std::string_view /*name*/) override { calls_.Call(); }
  std::string BeginSession(std::string_view /*companyFile*/, std::int32_t /*fileMode*/) override {
    calls_.Call();
    return "ticket";
  }
  std::string GetCurrentCompanyFileName(std::string_view /*ticket*/) override {
    if (const auto fault = calls_.CallForResult(); fault == Fault::ReturnsNothing) return {};
    return "C:\\Companies\\Nursery.qbw";
  }
  std::int16_t MajorVersion() override {
    calls_.Call();
    return version_;
  }
  std::int16_t MinorVersion() override {
    calls_.Call();
    return 0;
  }

 private:
  OutsideCalls& calls_;
  const Answers& answers_;
  int& open_;
  std::int16_t version_;
};

class Processors final : public RequestProcessorFactory {
 public:
  Processors(OutsideCalls& calls, std::int16_t version)
      : calls_(calls), version_(version), answers_(CompanyAnswers()) {}

  std::unique_ptr<RequestProcessor> Create() override {
    calls_.Call();
    return std::make_unique<Processor>(calls_, answers_, open, version_);
  }

  int open = 0;

 private:
  OutsideCalls& calls_;
  std::int16_t version_;
  Answers answers_;
};

class Table final : public PlanTable {
 public:
  Table(OutsideCalls& calls, const std::string& text) : calls_(calls), text_(text) {}
  std::string Serialize() override {
    const auto fault = calls_.CallForResult();
    return fault ? TextFor(*fault) : text_;
  }

 private:
  OutsideCalls& calls_;
  const std::string& text_;
};

class Tables final : public PlanData {
 public:
  explicit Tables(OutsideCalls& calls) : calls_(calls) {}

  std::shared_ptr<PlanTable> tables(std::string_view id) override {
    if (const auto fault = calls_.CallForResult(); fault == Fault::ReturnsNothing) return nullptr;
    return std::make_shared<Table>(calls_, texts.at(std::string(id)));
  }

  // Replaces all tables of the document, or none.
  void Deserialize(std::string& document) override {
    calls_.Call();
    const XmlElement root = XmlElement::Parse(document);
    PlanTables changed = texts;
    if (root.IsNamed("tableitem")) changed[root.Attribute("id").value_or("")] = root.Xml();
    for (XmlElement item = root.FirstChild(); item; item = item.NextSibling()) {
      if (item.IsNamed("tableitem")) changed[item.Attribute("id").value_or("")] = item.Xml();
    }
    texts.swap(changed);
  }

  PlanTables texts = NewPlan();

 private:
  OutsideCalls& calls_;
};

class Plan final : public PlanObject {
 public:
  explicit Plan(OutsideCalls& calls) : data(std::make_shared<Tables>(calls)), calls_(calls) {}
  bool OpenPlan(std::string_view /*planFile*/) override { return true; }
  std::shared_ptr<PlanData> Data() override {
    if (const auto fault = calls_.CallForResult(); fault == Fault::ReturnsNothing) return nullptr;
    return data;
  }

  std::shared_ptr<Tables> data;

 private:
  OutsideCalls& calls_;
};

class Sink final : public EventSink {
 public:
  explicit Sink(OutsideCalls& calls) : calls_(calls) {}
  void XMLprocessing(Variant& /*oXML*/) override { calls_.Call(); }
  void TableModified(std::string_view /*sTableID*/) override { calls_.Call(); }
  void AfterImport() override {
    calls_.Call();
    afterImport = true;
  }
  void ProgressBarChange(std::int16_t /*PercentValue*/, std::string_view /*Description*/) override {
    calls_.Call();
  }

  bool afterImport = false;

 private:
  OutsideCalls& calls_;
};

class CountedClock final : public Clock {
 public:
  explicit CountedClock(OutsideCalls& calls) : calls_(calls) {}
  LocalDateTime Now() override {
    calls_.Call();
    return {2003, 1, 15, 9, 0, 0};
  }

 private:
  OutsideCalls& calls_;
};

ImportOptions OptionsOf(ImportKind kind) {
  ImportOptions options;
  options.includeExpenseAccounts = true;
  options.includeIncomeAccounts = kind == ImportKind::Transactions || kind == ImportKind::Reports;
  options.includePastPerformance = kind == ImportKind::Reports;
  options.balancesImport = kind == ImportKind::Accounts ? BalImport_None : BalImport_All;
  options.krnProduct = kind == ImportKind::Selection ? QBKRN_BRI : QBKRN_ALD;
  options.growthRateIncome = 10;
  options.period.krnStartingMonth = 1;
  options.period.krnStartingYear = 2003;
  return options;
}

constexpr auto selection =
    "<expenseAccounts><account id=\"E-1\" selected=\"True\"><name>Rent</name></account>"
    "<account id=\"E-2\" selected=\"False\"><name>Utilities</name></account></expenseAccounts>";

}  // namespace

void OutsideCalls::FailAt(long number, Fault fault) noexcept {
  failing_ = number;
  fault_ = fault;
  counted_ = 0;
  struck_ = false;
}

void OutsideCalls::Call() {
  if (!Strikes() || fault_ >= Fault::ReturnsNothing) return;
  struck_ = true;
  if (fault_ == Fault::RunsOutOfMemory) throw std::bad_alloc();
  if (fault_ == Fault::ThrowsAnother) throw std::runtime_error("no Error");
  throw Error(refusalNumber, refusalDescription);
}

std::optional<Fault> OutsideCalls::CallForResult() {
  if (counted_ + 1 != failing_ || fault_ < Fault::ReturnsNothing) {
    Call();
    return std::nullopt;
  }
  ++counted_;
  struck_ = true;
  return fault_;
}

struct ImportWorld::Parts {
  explicit Parts(ImportKind importKind)
      : kind(importKind),
        processors(std::make_shared<Processors>(
            calls, static_cast<std::int16_t>(importKind == ImportKind::Reports ? 2 : 1))),
        plan(std::make_shared<Plan>(calls)),
        sink(std::make_shared<Sink>(calls)),
        clock(std::make_shared<CountedClock>(calls)) {}

  ImportKind kind;
  OutsideCalls calls;
  std::shared_ptr<Processors> processors;
  std::shared_ptr<Plan> plan;
  std::shared_ptr<Sink> sink;
  std::shared_ptr<CountedClock> clock;
  std::shared_ptr<ImportReport> report = std::make_shared<ImportReport>();
  std::unique_ptr<QBDataExchange> component;
  PlanTables oldTables = plan->data->texts;
  bool result = false;
};

ImportWorld::ImportWorld(ImportKind kind) : parts_(std::make_unique<Parts>(kind)) {
  OutsideWorld world;
  world.processors = parts_->processors;
  world.sinks = {parts_->sink};
  world.observer = parts_->report;
  world.clock = parts_->clock;
  parts_->component = std::make_unique<QBDataExchange>(std::move(world));
  parts_->component->KRNPlanData(Variant(parts_->plan));
  if (kind == ImportKind::Selection)
    parts_->component->SelectedExpenses(Variant(XmlElement::Parse(selection)));
  Restore();
}

ImportWorld::~ImportWorld() = default;

OutsideCalls& ImportWorld::Calls() noexcept {
  return parts_->calls;
}

QBDataExchange& ImportWorld::Component() noexcept {
  return *parts_->component;
}

void ImportWorld::Restore() {
  parts_->plan->data->texts = parts_->oldTables;
  parts_->sink->afterImport = false;
  *parts_->report = ImportReport();
  parts_->component->Options(OptionsOf(parts_->kind));
  parts_->component->ErrorNumber(0);
  parts_->component->ErrorDescription("");
}

bool ImportWorld::Go() {
  return parts_->result = parts_->component->Go();
}

Ending ImportWorld::End() const {
  return {parts_->result,
          parts_->component->ErrorNumber(),
          parts_->component->ErrorDescription(),
          parts_->sink->afterImport,
          parts_->report->Complete(),
          parts_->processors->open,
          parts_->plan->data->texts};
}

const PlanTables& ImportWorld::OldTables() const noexcept {
  return parts_->oldTables;
}

const Ending& Undisturbed(ImportKind kind) {
  static std::map<ImportKind, Ending> endings;
  auto& ending = endings[kind];
  if (!ending.afterImport) {
    ImportWorld world(kind);
    world.Go();
    ending = world.End();
  }
  return ending;
}

std::string Unsound(const Ending& ending, ImportKind kind) {
  const Ending& undisturbed = Undisturbed(kind);
  for (const auto& [id, text] : ending.tables) {
    if (!XmlElement::Parse(text)) return "the plan's table " + id + " is torn";
  }
  if (ending.result && ending.openSessions != 0) return "the session is open";
  if (ending.openSessions > 1) return "several sessions are open";
  if (!ending.afterImport && ending.number == 0 && ending.result) return "the import ended without an error";
  if (ending.afterImport && !ending.result) return "the import succeeded and failed";
  const bool reported = ending.number != 0 || !ending.complete;
  if (ending.afterImport && !reported && ending.tables != undisturbed.tables)
    return "figures are wrong without a word";
  if (kind == ImportKind::Accounts && !ending.afterImport && ending.tables != undisturbed.tables &&
      ending.tables != ImportWorld(kind).OldTables())
    return "the plan has changed";
  return {};
}

std::string UnsoundRepetition(ImportWorld& world, ImportKind kind) {
  world.Calls().FailAt(0, Fault::Refuses);
  world.Restore();
  world.Go();
  const Ending ending = world.End();
  const Ending& undisturbed = Undisturbed(kind);
  if (!ending.result || !ending.afterImport) {
    return fmt::format("the next import failed: {} {}", ending.number, ending.description);
  }
  if (ending.number != 0)
    return fmt::format("the next import reports {} {}", ending.number, ending.description);
  if (ending.complete != undisturbed.complete) return "the next import is incomplete";
  if (ending.tables != undisturbed.tables) return "the next import gives other figures";
  if (ending.openSessions != 0) return "the next import leaves the session open";
  return {};
}

}  // namespace krnqb::faults
