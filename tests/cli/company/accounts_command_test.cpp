#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using tests::ProgramRun;
using tests::RunProgram;
using tests::Workplace;

bool HasLine(const std::string& text, const std::string& line) {
  return ("\n" + text).find("\n" + line + "\n") != std::string::npos;
}

TEST(AccountsCommand, ListsExpenseAccountsAsATree) {
  const Workplace place;
  const ProgramRun run = RunProgram({"accounts", "expense", "--company", place.Nursery()});
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_TRUE(HasLine(run.out, "Account                Type      Balance  With sub-accounts")) << run.out;
  EXPECT_TRUE(HasLine(run.out, "Payroll Expenses       Expense   2214.80           28414.80")) << run.out;
  EXPECT_TRUE(HasLine(run.out, "  Wages                Expense  18720.00           26200.00")) << run.out;
  EXPECT_TRUE(HasLine(run.out, "    Seasonal Crew      Expense   7480.00            7480.00")) << run.out;
  EXPECT_EQ(run.out.find("Income"), std::string::npos);
}

TEST(AccountsCommand, ListsIncomeAccounts) {
  const Workplace place;
  const ProgramRun run = RunProgram({"accounts", "income", "--company", place.Nursery()});
  EXPECT_EQ(run.code, 0);
  EXPECT_NE(run.out.find("Café Sales"), std::string::npos) << run.out;
  EXPECT_EQ(run.out.find("Expense"), std::string::npos) << run.out;
}

TEST(AccountsCommand, ShowsWhichAccountsAreInThePlan) {
  const Workplace place;
  const ProgramRun run = RunProgram(
      {"accounts", "expense", "--company", place.Nursery(), "--plan", place / "bri.kpf", "--json"});
  EXPECT_EQ(run.code, 0);
  const auto json = nlohmann::json::parse(run.out);
  EXPECT_EQ(json.at("result"), "done");
  std::vector<std::string> selected;
  for (const auto& account : json.at("accounts")) {
    ASSERT_TRUE(account.contains("selected")) << account;
    if (account.at("selected").get<bool>()) selected.push_back(account.at("name"));
    for (const auto& subAccount : account.at("accounts")) EXPECT_FALSE(subAccount.contains("selected"));
  }
  EXPECT_EQ(selected,
            (std::vector<std::string>{"Meals & Entertainment", "Payroll Expenses", "Rent", "Utilities"}));
}

TEST(AccountsCommand, PrintsBalancesAsDecimalTexts) {
  const Workplace place;
  const std::string company = place / "small.qbw";
  RunProgram({"company", "new", company, "--name", "Small", "--fiscal-month", "1", "--processor", "1.1"});
  tests::WriteText(
      place / "accounts.xml",
      "<QBXML><QBXMLMsgsRs><AccountQueryRs>"
      "<AccountRet><ListID>1</ListID><Name>Rent</Name><FullName>Rent</FullName><Sublevel>0</Sublevel>"
      "<AccountType>Expense</AccountType><Balance>-5</Balance>"
      "<TotalBalance>28414.8</TotalBalance></AccountRet>"
      "<AccountRet><ListID>2</ListID><Name>Fuel</Name><FullName>Fuel</FullName><Sublevel>0</Sublevel>"
      "<AccountType>Expense</AccountType></AccountRet>"
      "</AccountQueryRs></QBXMLMsgsRs></QBXML>");
  ASSERT_EQ(RunProgram({"company", "load", company, place / "accounts.xml"}).code, 0);
  const auto accounts =
      nlohmann::json::parse(RunProgram({"accounts", "expense", "--company", company, "--json"}).out)
          .at("accounts");
  ASSERT_EQ(accounts.size(), 2U);
  EXPECT_EQ(accounts[0].at("balance"), "-5.00");
  EXPECT_EQ(accounts[0].at("total_balance"), "28414.80");
  EXPECT_TRUE(accounts[1].at("balance").is_null());
  EXPECT_TRUE(accounts[1].at("total_balance").is_null());
}

TEST(AccountsCommand, WarnsThatAPlanIsIgnored) {
  const Workplace place;
  const std::string company = place.Nursery();
  const ProgramRun ald =
      RunProgram({"accounts", "expense", "--company", company, "--plan", place / "ald.kpf"});
  EXPECT_EQ(ald.code, 0);
  EXPECT_EQ(ald.err,
            "krnqb: warning: --plan is ignored because only plans of product bri select expense accounts\n");
  const ProgramRun income =
      RunProgram({"accounts", "income", "--company", company, "--plan", place / "bri.kpf"});
  EXPECT_EQ(income.code, 0);
  EXPECT_EQ(income.err, "krnqb: warning: --plan is ignored because income accounts are not selected\n");
  EXPECT_EQ(income.out, RunProgram({"accounts", "income", "--company", company}).out);
}

TEST(AccountsCommand, ListsACompanyThatDoesNotStateItsFiscalYear) {
  const Workplace place;
  const std::string company = place.Nursery();
  tests::WriteText(place / "company.xml",
                   "<QBXML><QBXMLMsgsRs><CompanyQueryRs><CompanyRet><CompanyName>N</CompanyName></CompanyRet>"
                   "</CompanyQueryRs></QBXMLMsgsRs></QBXML>");
  EXPECT_EQ(RunProgram({"company", "load", company, place / "company.xml"}).code, 0);
  EXPECT_EQ(RunProgram({"accounts", "income", "--company", company}).code, 0);
}

TEST(AccountsCommand, ReportsWhatIsWrongWithCompanyOrPlan) {
  const Workplace place;
  const ProgramRun company = RunProgram({"accounts", "income", "--company", place / "none.qbw", "--json"});
  EXPECT_EQ(company.code, 1);
  EXPECT_EQ(nlohmann::json::parse(company.out).at("error_description"),
            "There is no company file " + (place / "none.qbw") + ".");
  const ProgramRun plan =
      RunProgram({"accounts", "expense", "--company", place.Nursery(), "--plan", place / "none.kpf"});
  EXPECT_EQ(plan.code, 1);
  EXPECT_EQ(plan.err, "krnqb: cannot open the plan " + (place / "none.kpf") +
                          ": No such file or directory; check the path\n");
}

TEST(AccountsCommand, FailsIfThePlanHasNoSelectionTables) {
  const Workplace place;
  tests::WriteText(place / "bare.kpf", "<plan product='bri' start='2003-01'><tables/></plan>");
  const ProgramRun run =
      RunProgram({"accounts", "expense", "--company", place.Nursery(), "--plan", place / "bare.kpf"});
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err.find("krnqb: listing accounts failed: "), 0U) << run.err;
}

}  // namespace
}  // namespace krnqb::cli
