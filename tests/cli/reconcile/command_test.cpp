#include "cli/reconcile/command.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>

#include "build_paths.h"
#include "cli/reconcile/reconciliation_proof.h"
#include "reconcile/cause.h"
#include "support/display_width.h"

namespace krnqb::cli {
namespace {

using nlohmann::json;
using tests::CausesOf;
using tests::LineOf;
using tests::ProgramRun;
using tests::ReconciledPlan;
using tests::ReconcilePlan;
using tests::RunProgram;
using tests::With;
using tests::Words;
using tests::Workplace;
using tests::WriteText;
using Texts = std::vector<std::string>;

// Each line's account with its causes, those of lines without causes omitted.
std::map<std::string, Texts> CausesByAccount(const json& years) {
  std::map<std::string, Texts> causes;
  for (const json& line : years.at("lines")) {
    EXPECT_EQ(line.at("unexplained"), "0.00") << line.dump();
    if (!line.at("causes").empty()) causes[line.at("account")] = CausesOf(line);
  }
  EXPECT_EQ(years.at("whole").at("unexplained"), "0.00");
  return causes;
}

const Texts everything{"--expenses", "--income", "--balances", "all", "--quiet"};

// A workplace with the nursery's company and plans.
class Reconcile : public testing::Test {
 protected:
  void Import(const std::string& target, const Words& options = everything) const {
    const ProgramRun run = RunProgram(With({"import", "--company", company, "--plan", target}, options));
    ASSERT_EQ(run.code, 0) << run.err;
  }
  json Years(const Words& more = {}) const {
    const ProgramRun run =
        RunProgram(With({"reconcile", "--company", company, "--plan", plan, "--json"}, more));
    EXPECT_EQ(run.code, 4) << run.err;
    return json::parse(run.out);
  }
  static ProgramRun Run(const Words& more) { return RunProgram(With({"reconcile"}, more)); }

  const Workplace place;
  const std::string company = place.NurseryYear();
  const std::string plan = place / "ald.kpf";
};

TEST_F(Reconcile, ExplainsTheNurserysPlanByTransactions) {
  Import(plan);
  const std::map<std::string, Texts> expected{
      {"Sales Discounts", {"item-without-account 141.78 (5)"}},
      {"Café Purchases", {"type-not-taken -5996.60 (7)"}},
      {"Cost of Goods Sold", {"type-not-taken -1044.00 (3)", "average-cost -0.085 (17)"}},
      {"Rent", {"row-twice 11610.00"}},
      {"Job Expenses", {"item-group -48.00 (1)", "billed-once -921.65 (3)", "billed-again -318.00 (1)"}},
      {"Depreciation", {"spread-balance 7260.00"}},
      // Twelfths of 2,214.80, each of whole millionths.
      {"Payroll Expenses", {"spread-balance 2214.800004"}},
      {"Interest Expense", {"type-not-taken -3699.70 (4)"}}};
  const json years = Years();
  EXPECT_EQ(CausesByAccount(years), expected);
  EXPECT_EQ(years.at("whole").at("books"), "37892.16");
}

TEST_F(Reconcile, ExplainsTheNurserysPlanByReports) {
  const Workplace reports;
  const std::string later = reports.NurseryYear("2.0");
  const Words source{"--company", later, "--plan", reports / "ald.kpf"};
  ASSERT_EQ(RunProgram(With(With({"import"}, source), everything)).code, 0);
  const std::map<std::string, Texts> expected{{"Landscaping", {"report-row-twice 360.00"}},
                                              {"Rent", {"row-twice 11610.00"}},
                                              {"Interest Expense", {"type-not-taken -3699.70 (4)"}}};
  EXPECT_EQ(CausesByAccount(ReconcilePlan(source).years), expected);
}

// The other books have a cost of 0.08 less in all, the year's depreciation and payroll, and interest.
TEST_F(Reconcile, NamesKindsThatAnImportDoesNotRead) {
  Words load{"company", "load", company};
  for (const auto& document :
       std::filesystem::directory_iterator(krnqb::tests::SamplesFolder() + "/nursery-books")) {
    load.push_back(document.path().string());
  }
  ASSERT_EQ(RunProgram(load).code, 0);
  Import(plan);
  const std::map<std::string, Texts> causes = CausesByAccount(Years());
  EXPECT_EQ(causes.at("Depreciation"), (Texts{"spread-balance 7260.00", "kind-not-read -7260.00 (12)"}));
  EXPECT_EQ(causes.at("Payroll Expenses"),
            (Texts{"spread-balance 2214.800004", "kind-not-read -28414.80 (12)"}));
  EXPECT_EQ(causes.at("Interest Income"), (Texts{"kind-not-read -312.60 (4)"}));
  EXPECT_EQ(causes.at("Cost of Goods Sold"),
            (Texts{"kind-not-read 0.08 (6)", "type-not-taken -1044.00 (3)", "average-cost -0.085 (17)"}));
}

TEST_F(Reconcile, ReadsTheTransactionsOfACompanyWithReportsIfTheImportDid) {
  const Workplace reports;
  const Words source{"--company", reports.NurseryYear("2.0"), "--plan", reports / "ald.kpf"};
  ASSERT_EQ(
      RunProgram(With(With(With({"import"}, source), everything), {"--amounts-from", "transactions"})).code,
      0);
  const json years = ReconcilePlan(source).years;
  EXPECT_EQ(CausesOf(LineOf(years, "sales", "Landscaping")), Texts{});
  EXPECT_EQ(CausesOf(LineOf(years, "cost-of-goods", "Café Purchases")),
            (Texts{"type-not-taken -5996.60 (7)"}));
}

constexpr std::string_view yearReport = R"(Profit and Loss
January through December 2002
Accrual Basis
,Jan - Dec 02
Income,
  Plant Sales,"28,611.15"
  Landscaping,"29,074.50"
  Garden Supplies,"21,949.30"
  Café Sales,"17,850.00"
  Sales Discounts,-141.78
Total Income,"97,343.17"
Expense,
  Payroll Expenses,"28,414.80"
  Rent,"11,610.00"
Total Expense,"40,024.80"
Net Income,"57,318.37"
)";

TEST_F(Reconcile, TakesTheBooksFromAReportOfTheYear) {
  Import(plan);
  WriteText(place / "year.csv", yearReport);
  const json years = Years({"--profit-and-loss", place / "year.csv"});
  EXPECT_EQ(years.at("books"), place / "year.csv");
  EXPECT_EQ(years.at("whole").at("books"), "57318.37");
  const std::map<std::string, Texts> causes = CausesByAccount(years);
  EXPECT_EQ(causes.at("Payroll Expenses"), (Texts{"spread-balance 2214.800004", "not-loaded -28414.80"}));
  EXPECT_EQ(causes.at("Rent"), (Texts{"row-twice 11610.00"}));
  EXPECT_EQ(causes.at("Utilities"), (Texts{"not-loaded 4619.90"}));
  EXPECT_FALSE(causes.contains("Plant Sales"));
  const json months = Years({"--profit-and-loss", place / "year.csv", "--months"});
  EXPECT_EQ(months.at("lines").at(0).at("books"), nullptr) << "the report has no months";
  EXPECT_EQ(months.at("groups"), years.at("groups"));
}

TEST_F(Reconcile, TakesTheBooksFromAReportByMonth) {
  Import(plan);
  std::string titles = "Profit and Loss\nAccrual Basis\n";
  std::string rent = "Rent";
  std::string total = "Total Expense";
  for (const char* month :
       {"Jan", "Feb", "Mar", "Apr", "May", "Jun", "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"}) {
    titles += "," + std::string(month) + " 02";
    rent += ",900.00";
    total += ",900.00";
  }
  WriteText(place / "months.csv", titles + "\nExpense\n  " + rent + "\n" + total + "\n");
  const ReconciledPlan reconciled =
      ReconcilePlan({"--company", company, "--plan", plan, "--profit-and-loss", place / "months.csv"});
  ProveSums(reconciled);
  ProveExplained(reconciled);
  EXPECT_EQ(LineOf(reconciled.years, "expenses", "Rent").at("books"), "10800.00");
  EXPECT_EQ(CausesOf(LineOf(reconciled.years, "expenses", "Rent")),
            (Texts{"row-twice 11610.00", "not-loaded 810.00"}));
}

constexpr std::string_view detailReport = R"(Profit & Loss Detail
January through December 2002
,,Type,Date,Num,Name,Memo,Split,Amount,Balance
Ordinary Income/Expense,,,,,,,,,
,Expense
,  Payroll Expenses
,,Paycheck,01/15/2002,101,"Ames, Jo",Wages,Checking,"1,000.00","1,000.00"
,,Liability Check,02/15/2002,102,,Tax,Checking,900.00,"1,900.00"
,  Total Payroll Expenses,,,,,,,"1,900.00","1,900.00"
,  Rent
,,Check,01/03/2002,1,Hollow,,Checking,950.00,950.00
,  Total Rent,,,,,,,950.00,950.00
,Total Expense,,,,,,,"2,850.00","2,850.00"
Net Income,,,,,,,,"-2,850.00","-2,850.00"
)";

TEST_F(Reconcile, NamesTheTypesOfTransactionsThatAreNotLoaded) {
  Import(plan);
  WriteText(place / "detail.csv", detailReport);
  const ReconciledPlan reconciled =
      ReconcilePlan({"--company", company, "--plan", plan, "--profit-and-loss", place / "detail.csv"});
  ProveSums(reconciled);
  ProveExplained(reconciled);
  EXPECT_EQ(CausesOf(LineOf(reconciled.years, "expenses", "Payroll Expenses")),
            (Texts{"spread-balance 2214.800004", "not-loaded -900.00 Liability Check",
                   "not-loaded -1000.00 Paycheck"}));
  const json rent = LineOf(reconciled.years, "expenses", "Rent");
  EXPECT_EQ(CausesOf(rent), (Texts{"row-twice 11610.00", "not-in-books 10660.00 (11)"}));
  const ProgramRun shown =
      Run({"--company", company, "--plan", plan, "--profit-and-loss", place / "detail.csv"});
  EXPECT_NE(
      shown.out.find("         -900.00  in the books, but not among the loaded transactions: Liability\n"
                     "                  Check\n"
                     "       -1,000.00  in the books, but not among the loaded transactions: Paycheck\n"),
      std::string::npos)
      << shown.out;
}

TEST_F(Reconcile, WarnsOfADocumentOnTheCashBasis) {
  Import(plan);
  WriteText(place / "cash.csv", tests::Replaced(std::string(yearReport), "Accrual Basis", "Cash Basis"));
  const ProgramRun run = Run({"--company", company, "--plan", plan, "--profit-and-loss", place / "cash.csv"});
  EXPECT_EQ(run.code, 4);
  EXPECT_EQ(run.err, "krnqb: warning: " + place / "cash.csv" +
                         " is on the cash basis, but imports are on the accrual basis: unpaid bills and "
                         "invoices differ\n");
}

TEST_F(Reconcile, ComparesARecordingWithTheBooksGiven) {
  Import(plan, With(everything, {"--record", place / "exchange"}));
  const Words source{"--replay", place / "exchange", "--plan", plan};
  const ProgramRun run = Run(source);
  EXPECT_EQ(run.code, 4);
  EXPECT_NE(run.out.find("The plan differs from what an import books: its net income is 11,610.00 too low;\n"
                         "every difference has a cause. The books' own amounts are unknown: "),
            std::string::npos)
      << run.out;
  const json unknown = ReconcilePlan(source).years;
  EXPECT_EQ(unknown.at("books"), nullptr);
  EXPECT_EQ(unknown.at("whole").at("books"), nullptr);
  EXPECT_EQ(CausesByAccount(unknown), (std::map<std::string, Texts>{{"Rent", {"row-twice 11610.00"}}}));

  WriteText(place / "year.csv", yearReport);
  const Words statement{"--profit-and-loss", place / "year.csv"};
  std::map<std::string, Texts> byCompany = CausesByAccount(Years(statement));
  byCompany.erase("Interest Expense");  // an import asks for no accounts of its type
  EXPECT_EQ(CausesByAccount(ReconcilePlan(With(source, statement)).years), byCompany);
}

TEST_F(Reconcile, TakesTheBooksFromRecordedReports) {
  const Workplace reports;
  const std::string later = reports.NurseryYear("2.0");
  const Words import{"import",   "--company",         later, "--plan", reports / "ald.kpf",
                     "--record", reports / "exchange"};
  ASSERT_EQ(RunProgram(With(import, everything)).code, 0);
  const json years = ReconcilePlan({"--replay", reports / "exchange", "--plan", reports / "ald.kpf"}).years;
  EXPECT_EQ(years.at("books"), "the recorded reports");
  const std::map<std::string, Texts> expected{{"Landscaping", {"report-row-twice 360.00"}},
                                              {"Rent", {"row-twice 11610.00"}}};
  EXPECT_EQ(CausesByAccount(years), expected);
}

TEST_F(Reconcile, NamesAnImportOfOtherMonths) {
  Import(plan);
  const json years = Years({"--import-start", "2001-01"});
  EXPECT_EQ(years.at("from"), "2001-01");
  EXPECT_EQ(CausesOf(LineOf(years, "sales", "Plant Sales")), (Texts{"another-period 28611.15"}));
}

TEST_F(Reconcile, TakesTheMonthsOfTheLastImport) {
  Import(plan, With(everything, {"--import-start", "2001-07"}));
  const json years = Years();
  EXPECT_EQ(years.at("from"), "2001-07");
  EXPECT_EQ(CausesOf(LineOf(years, "sales", "Plant Sales")), Texts{});
}

TEST_F(Reconcile, NamesWhatWasChangedInThePlanAfterTheImport) {
  Import(plan);
  // The actual advertising of the first month with an amount.
  WriteText(plan, tests::Replaced(tests::ReadText(plan), "<c>360</c>", "<c>460.5</c>"));
  const json years = Years();
  const json line = LineOf(years, "expenses", "Advertising");
  EXPECT_EQ(line.at("plan"), "1165.50");
  EXPECT_EQ(line.at("written"), "1065.00");
  EXPECT_EQ(CausesOf(line), (Texts{"edited-since 100.50"}));
  EXPECT_EQ(CausesOf(LineOf(years, "expenses", "Rent")), (Texts{"row-twice 11610.00"}));
}

TEST_F(Reconcile, NamesBooksThatHaveChangedSinceTheImport) {
  Import(plan);
  WriteText(place / "check.xml", R"(<QBXML><QBXMLMsgsRs><CheckQueryRs><CheckRet><TxnID>NEW-1</TxnID>
<TxnDate>2002-05-06</TxnDate><ExpenseLineRet><TxnLineID>NEW-2</TxnLineID><AccountRef>
<ListID>2C0000-919102422</ListID></AccountRef><Amount>10.00</Amount></ExpenseLineRet>
</CheckRet></CheckQueryRs></QBXMLMsgsRs></QBXML>)");
  const json before = Years();
  ASSERT_EQ(RunProgram({"company", "load", company, place / "check.xml"}).code, 0);
  const json years = Years();
  const auto changed = [&] {
    Texts accounts;
    for (const json& line : years.at("lines")) {
      for (const json& cause : line.at("causes")) {
        if (cause.at("code") == "books-changed") accounts.push_back(cause.at("amount"));
      }
    }
    return accounts;
  };
  EXPECT_EQ(changed(), (Texts{"-10.00"}));
}

TEST_F(Reconcile, NamesAPlanThatWasNeverImportedInto) {
  const json years = Years();
  EXPECT_EQ(CausesOf(LineOf(years, "expenses", "Rent")), (Texts{"not-imported -11610.00"}));
  EXPECT_EQ(CausesOf(LineOf(years, "expenses", "Utilities")), (Texts{"no-row -4619.90"}));
}

TEST_F(Reconcile, ComparesAPlanWithTheVersionThatAnUndoBroughtBack) {
  Import(plan, {"--expenses", "--balances", "all", "--quiet"});
  const json before = Years();
  Import(plan);
  ASSERT_EQ(RunProgram({"plan", "undo", plan}).code, 0);
  EXPECT_EQ(Years(), before);
  EXPECT_EQ(CausesOf(LineOf(before, "sales", "Plant Sales")), (Texts{"not-asked-for -28611.15"}));
  ASSERT_EQ(RunProgram({"plan", "undo", plan}).code, 0);
  EXPECT_EQ(CausesOf(LineOf(Years(), "sales", "Plant Sales")), (Texts{"not-imported -28611.15"}));
}

TEST_F(Reconcile, ReadsTheAmountsInsideTheFormulasIfOnlyPlannedOnesWereWritten) {
  Import(plan, {"--expenses", "--income", "--balances", "planned", "--growth-income", "10", "--quiet"});
  const ReconciledPlan reconciled = ReconcilePlan({"--company", company, "--plan", plan});
  ProveSums(reconciled);
  ProveExplained(reconciled);
  EXPECT_GT(ProvePlan(reconciled, plan, true), 100);
  EXPECT_EQ(CausesOf(LineOf(reconciled.years, "sales", "Plant Sales")), Texts{});
}

TEST_F(Reconcile, NamesExpensesThatWereNotSelected) {
  const std::string bri = place / "bri.kpf";
  Import(bri, {"--expenses", "--income", "--balances", "all", "--select-expense", "Rent", "--quiet"});
  const ReconciledPlan reconciled = ReconcilePlan({"--company", company, "--plan", bri});
  ProveSums(reconciled);
  ProveExplained(reconciled);
  EXPECT_EQ(CausesOf(LineOf(reconciled.years, "expenses", "Advertising")), (Texts{"not-asked-for -1065.00"}));
  const Texts rent = CausesOf(LineOf(reconciled.years, "expenses", "Rent"));
  EXPECT_EQ(std::ranges::count(rent, "not-asked-for -11610.00"), 0);
}

TEST_F(Reconcile, ChangesNothing) {
  Import(plan);
  const std::string before = tests::ReadText(plan);
  const auto files = [&] {
    std::set<std::string> names;
    for (const auto& file : std::filesystem::recursive_directory_iterator(place.Folder())) {
      names.insert(file.path().string());
    }
    return names;
  };
  const std::set<std::string> names = files();
  EXPECT_EQ(Run({"--company", company, "--plan", plan}).code, 4);
  EXPECT_EQ(files(), names);
  EXPECT_EQ(tests::ReadText(plan), before);
}

TEST_F(Reconcile, FitsEightyColumns) {
  Import(plan);
  for (const Words& more : {Words{}, Words{"--months"}}) {
    const ProgramRun run = Run(With({"--company", company, "--plan", plan}, more));
    std::istringstream lines(run.out);
    std::string first;
    std::getline(lines, first);  // names the company's file
    std::getline(lines, first);
    for (std::string line; std::getline(lines, line);) EXPECT_LE(DisplayWidth(line), 80U) << line;
    EXPECT_TRUE(
        run.out.ends_with("\nThe plan differs from the books: its net income is 8,914.985 too low; "
                          "every\ndifference has a cause.\n"))
        << run.out;
  }
}

// The table of causes in docs/commands.md.
TEST(ReconcileCauses, AreDocumentedInTheirOrder) {
  std::istringstream lines(tests::ReadText(krnqb::tests::SchemasFolder() + "/../commands.md"));
  Texts documented;
  bool inTable = false;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("| Cause |")) inTable = true;
    if (!inTable || !line.starts_with("| `")) continue;
    if (line.empty()) break;
    documented.push_back(line.substr(3, line.find('`', 3) - 3));
    if (documented.back() == "rounding") break;
  }
  Texts words;
  for (int code = 0; code <= static_cast<int>(reconcile::CauseCode::Rounding); ++code) {
    words.emplace_back(CauseWord(static_cast<reconcile::CauseCode>(code)));
  }
  EXPECT_EQ(documented, words);
  const json schema = json::parse(tests::ReadText(krnqb::tests::SchemasFolder() + "/reconcile.schema.json"));
  EXPECT_EQ(schema.at("definitions").at("cause").at("properties").at("code").at("enum"), json(words));
}

}  // namespace
}  // namespace krnqb::cli
