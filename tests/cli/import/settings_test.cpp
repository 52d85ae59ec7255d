#include "cli/import/settings.h"

#include <gtest/gtest.h>

#include "cli/console/failure.h"
#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using Texts = std::vector<std::string>;

ImportCommand Options() {
  ImportCommand options;
  options.companyFile = "nursery.qbw";
  options.planFile = "plan.kpf";
  options.expenses = true;
  return options;
}

ImportSource Source(std::int16_t majorVersion = 1) {
  return {.processors = nullptr,
          .companyPath = "nursery.qbw",
          .description = "Nursery (nursery.qbw)",
          .majorVersion = majorVersion};
}

std::shared_ptr<plan_file::PlanFile> Plan(const std::string& attributes) {
  const tests::Workplace place;
  const std::string file = place / "plan.kpf";
  tests::WriteText(file, "<plan" + attributes + "><tables/></plan>");
  return plan_file::PlanFile::Open(file);
}

std::string LineOf(const ImportCommand& options,
                   const std::string& planAttributes = " product='ald' start='2003-01'") {
  try {
    CheckImportOptions(options);
    SettleImport(options, *Plan(planAttributes));
  } catch (const Failure& failure) {
    return failure.Line();
  }
  return "no failure";
}

Texts Warnings(const ImportCommand& options, std::int16_t majorVersion = 1,
               const std::string& planAttributes = " product='ald' start='2003-01'") {
  Texts texts;
  for (const ImportWarning& warning :
       ImportWarnings(SettleImport(options, *Plan(planAttributes)), Source(majorVersion))) {
    texts.push_back(warning.message);
  }
  return texts;
}

TEST(CheckImportOptions, RequiresSomethingToImport) {
  ImportCommand options = Options();
  options.expenses = false;
  EXPECT_EQ(
      LineOf(options),
      "krnqb: wrong usage: nothing is selected for import; give --expenses, --income or --past-performance");
}

TEST(CheckImportOptions, RequiresACompanyOrARecording) {
  ImportCommand options = Options();
  options.companyFile.reset();
  EXPECT_EQ(LineOf(options),
            "krnqb: wrong usage: no company is given; give --company FILE, --quickbooks on Windows, or "
            "--replay FILE for a recorded "
            "exchange");
  options.replayFile = "exchange.jsonl";
  EXPECT_EQ(LineOf(options), "no failure");
}

TEST(SettleImport, TakesProductAndStartFromThePlan) {
  const ImportSettings settings = SettleImport(Options(), *Plan(" product='cor' start='2004-07'"));
  EXPECT_EQ(settings.product, QBKRN_COR);
  EXPECT_EQ(settings.planStart, (YearMonth{2004, 7}));
  EXPECT_EQ(settings.importStart, (YearMonth{2003, 7}));
}

TEST(SettleImport, TakesWhatThePlanDoesNotStateFromTheOptions) {
  ImportCommand options = Options();
  options.product = QBKRN_BRI;
  options.planStart = YearMonth{2005, 1};
  options.importStart = YearMonth{2002, 3};
  for (const char* attributes :
       {"", " product='bri'", " start='2005-01'", " product='bri' start='2005-01'"}) {
    const ImportSettings settings = SettleImport(options, *Plan(attributes));
    EXPECT_EQ(settings.product, QBKRN_BRI) << attributes;
    EXPECT_EQ(settings.planStart, (YearMonth{2005, 1})) << attributes;
    EXPECT_EQ(settings.importStart, (YearMonth{2002, 3})) << attributes;
  }
}

TEST(SettleImport, RefusesOptionsThatContradictThePlan) {
  ImportCommand product = Options();
  product.product = QBKRN_COR;
  const std::string begin = "krnqb: wrong usage: the plan plan.kpf ";
  EXPECT_EQ(LineOf(product, " product='bri' start='2003-01'"),
            begin +
                "is of product bri and begins in 2003-01, but --product is cor; leave out --product, or give "
                "another plan");
  EXPECT_EQ(LineOf(product, " product='bri'"),
            begin + "is of product bri, but --product is cor; leave out --product, or give another plan");
  ImportCommand start = Options();
  start.planStart = YearMonth{2005, 7};
  EXPECT_EQ(LineOf(start, " product='bri' start='2003-01'"),
            begin +
                "is of product bri and begins in 2003-01, but --plan-start is 2005-07; leave out "
                "--plan-start, or give another plan");
  EXPECT_EQ(LineOf(start, " start='2003-01'"),
            begin +
                "begins in 2003-01, but --plan-start is 2005-07; leave out --plan-start, or give another "
                "plan");
  ImportCommand both = start;
  both.product = QBKRN_ALD;
  EXPECT_EQ(LineOf(both, " product='bri' start='2003-01'"),
            begin +
                "is of product bri and begins in 2003-01, but --product is ald and --plan-start is 2005-07; "
                "leave out --product and --plan-start, or give another plan");
}

TEST(SettleImport, RequiresAProductFromThePlanOrTheOptions) {
  EXPECT_EQ(
      LineOf(Options(), " start='2004-07'"),
      "krnqb: wrong usage: the plan plan.kpf does not state its product; give --product ald, bri or cor");
}

TEST(SettleImport, RequiresAStartFromThePlanOrTheOptions) {
  EXPECT_EQ(
      LineOf(Options(), " product='ald'"),
      "krnqb: wrong usage: the plan plan.kpf does not state its first month; give --plan-start YYYY-MM");
}

TEST(Configure, SetsEveryOptionOfTheComponent) {
  ImportCommand options = Options();
  options.income = true;
  options.pastPerformance = true;
  options.balances = BalImport_All;
  options.growthRateIncome = std::int16_t{3};
  options.growthRateCogs = std::int16_t{-4};
  options.growthRateExpenses = std::int16_t{5};
  options.importStart = YearMonth{2001, 9};
  options.fiscalMonth = std::int16_t{7};
  const auto plan = Plan(" product='cor' start='2004-02'");
  QBDataExchange exchange({});
  Configure(exchange, SettleImport(options, *plan), Source(), plan);
  EXPECT_TRUE(exchange.IncludeExpenseAccounts());
  EXPECT_TRUE(exchange.IncludeIncomeAccounts());
  EXPECT_TRUE(exchange.IncludePastPerformance());
  EXPECT_EQ(exchange.BalancesImport(), BalImport_All);
  EXPECT_EQ(exchange.GrowthRateIncome(), 3);
  EXPECT_EQ(exchange.GrowthRateCOGS(), -4);
  EXPECT_EQ(exchange.GrowthRateExpenses(), 5);
  EXPECT_EQ(exchange.KRNProduct(), QBKRN_COR);
  EXPECT_EQ(exchange.KRNStartingYear(), 2004);
  EXPECT_EQ(exchange.KRNStartingMonth(), 2);
  EXPECT_EQ(exchange.StartingYear(), 2001);
  EXPECT_EQ(exchange.StartingMonth(), 9);
  EXPECT_EQ(exchange.QBStartingMonth(), 7);
  EXPECT_EQ(exchange.KRNPlanData().AsObject<plan_file::PlanFile>(), plan);
}

TEST(Configure, LeavesTheImportStartAndTheFiscalMonthToTheComponent) {
  const auto plan = Plan(" product='ald' start='2004-02'");
  QBDataExchange exchange({});
  Configure(exchange, SettleImport(Options(), *plan), Source(), plan);
  EXPECT_EQ(exchange.QBStartingMonth(), 0);
  EXPECT_EQ(exchange.StartingYear(), 2003);
  EXPECT_EQ(exchange.StartingMonth(), 2);
}

std::string Announcement(const ImportCommand& options, const std::string& planAttributes) {
  return AnnouncementText(SettleImport(options, *Plan(planAttributes)), Source());
}

TEST(AnnouncementText, NamesCompanyPeriodPlanProductAndOptions) {
  EXPECT_EQ(Announcement(Options(), " product='ald' start='2003-01'"),
            "Importing expense accounts from Nursery (nursery.qbw), January to December 2002, into plan.kpf "
            "(product ald, from January 2003): no amounts.");
}

TEST(AnnouncementText, NamesAPeriodThatCrossesTheYear) {
  EXPECT_NE(Announcement(Options(), " product='ald' start='2003-07'").find(", July 2002 to June 2003, into "),
            std::string::npos);
}

TEST(AnnouncementText, NamesEveryOption) {
  ImportCommand options = Options();
  options.income = true;
  options.pastPerformance = true;
  options.balances = BalImport_Actual;
  options.growthRateIncome = std::int16_t{3};
  options.growthRateCogs = std::int16_t{-4};
  options.growthRateExpenses = std::int16_t{0};
  options.fiscalMonth = std::int16_t{7};
  options.selectedExpenses = {"Rent", "Utilities", "Insurance"};
  options.acceptIncomplete = true;
  options.recordFile = "exchange.jsonl";
  options.dryRun = true;
  EXPECT_EQ(Announcement(options, " product='bri' start='2003-01'"),
            "Importing expense and income accounts and past performance from Nursery (nursery.qbw), "
            "January to December 2002, into plan.kpf (product bri, from January 2003): "
            "actual amounts from transactions, sales growth 3%, cost growth -4%, expense growth 0%, fiscal "
            "year from July, "
            "selecting Rent, Utilities and Insurance, incomplete data accepted, recorded in exchange.jsonl, "
            "dry run.");
  options.selectAllExpenses = true;
  EXPECT_NE(Announcement(options, " product='bri' start='2003-01'").find("all expense accounts selected, "),
            std::string::npos);
}

TEST(ImportWarnings, AreEmptyWhenEveryOptionTakesEffect) {
  ImportCommand options = Options();
  options.income = true;
  options.pastPerformance = true;
  options.balances = BalImport_All;
  options.growthRateIncome = options.growthRateCogs = options.growthRateExpenses = std::int16_t{1};
  options.importStart = YearMonth{2001, 9};
  EXPECT_EQ(Warnings(options), Texts{});
  EXPECT_EQ(Warnings(options, 2), Texts{});
}

TEST(ImportWarnings, SayThatPastPerformanceNeedsAmounts) {
  ImportCommand options = Options();
  options.pastPerformance = true;
  EXPECT_EQ(Warnings(options), Texts{"--past-performance is ignored because --balances is none"});
}

TEST(ImportWarnings, SayThatBriPlansHaveNoPastPerformance) {
  ImportCommand options = Options();
  options.pastPerformance = true;
  options.balances = BalImport_All;
  EXPECT_EQ(Warnings(options, 1, " product='bri' start='2003-01'"),
            Texts{"--past-performance is ignored because plans of product bri have none"});
}

TEST(ImportWarnings, SayThatPastPerformanceFromReportsNeedsExpenses) {
  ImportCommand options = Options();
  options.expenses = false;
  options.income = true;
  options.pastPerformance = true;
  options.balances = BalImport_All;
  EXPECT_EQ(Warnings(options, 2),
            Texts{"--past-performance without --expenses ends after the first year's income because "
                  "this company answers with reports"});
  EXPECT_EQ(Warnings(options, 1), Texts{});
}

TEST(ImportWarnings, SayThatPeriodAndGrowthNeedAmounts) {
  ImportCommand options = Options();
  options.importStart = YearMonth{2001, 9};
  options.growthRateIncome = options.growthRateCogs = options.growthRateExpenses = std::int16_t{0};
  EXPECT_EQ(Warnings(options), (Texts{"--import-start is ignored because --balances is none",
                                      "--growth-income is ignored because --balances is none",
                                      "--growth-cogs is ignored because --balances is none",
                                      "--growth-expenses is ignored because --balances is none"}));
}

TEST(ImportWarnings, SayThatGrowthNeedsItsAccounts) {
  ImportCommand options = Options();
  options.balances = BalImport_Planned;
  options.growthRateIncome = options.growthRateCogs = options.growthRateExpenses = std::int16_t{1};
  EXPECT_EQ(Warnings(options), (Texts{"--growth-income is ignored without --income",
                                      "--growth-cogs is ignored without --income"}));
  options.expenses = false;
  options.income = true;
  EXPECT_EQ(Warnings(options), Texts{"--growth-expenses is ignored without --expenses"});
}

TEST(ImportWarnings, SayThatSelectingNeedsABriPlanAndExpenses) {
  ImportCommand options = Options();
  options.selectedExpenses = {"Rent"};
  options.selectAllExpenses = true;
  EXPECT_EQ(
      Warnings(options),
      (Texts{"--select-expense is ignored because only plans of product bri select expense accounts",
             "--select-all-expenses is ignored because only plans of product bri select expense accounts"}));
  EXPECT_EQ(Warnings(options, 1, " product='bri' start='2003-01'"), Texts{});
  options.expenses = false;
  options.income = true;
  EXPECT_EQ(Warnings(options, 1, " product='bri' start='2003-01'"),
            (Texts{"--select-expense is ignored because --expenses is not given",
                   "--select-all-expenses is ignored because --expenses is not given"}));
}

TEST(ImportWarnings, SayThatARecordingReplacesTheCompany) {
  ImportCommand options = Options();
  options.replayFile = "exchange.jsonl";
  EXPECT_EQ(Warnings(options), Texts{"--company is ignored because --replay is given"});
}

TEST(ImportWarnings, HaveACodeThatSaysWhichOptionIsIgnored) {
  const auto codes = [](const ImportCommand& options, const std::string& product) {
    const auto plan = Plan(" product='" + product + "' start='2003-01'");
    Texts texts;
    for (const ImportWarning& warning : ImportWarnings(SettleImport(options, *plan), Source(2))) {
      texts.push_back(warning.code);
    }
    return texts;
  };
  ImportCommand options = Options();
  options.replayFile = "exchange.jsonl";
  options.pastPerformance = options.selectAllExpenses = true;
  options.selectedExpenses = {"Rent"};
  options.importStart = YearMonth{2001, 9};
  options.growthRateIncome = options.growthRateCogs = options.growthRateExpenses = std::int16_t{0};
  EXPECT_EQ(codes(options, "ald"),
            (Texts{"company-ignored", "past-performance-ignored", "import-start-ignored",
                   "growth-income-ignored", "growth-cogs-ignored", "growth-expenses-ignored",
                   "select-expense-ignored", "select-all-expenses-ignored"}));
  options = Options();
  options.pastPerformance = true;
  options.balances = BalImport_All;
  EXPECT_EQ(codes(options, "bri"), Texts{"past-performance-ignored"});
  options.expenses = false;
  EXPECT_EQ(codes(options, "ald"), Texts{"past-performance-without-expenses"});
}

}  // namespace
}  // namespace krnqb::cli
