#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "build_paths.h"
#include "cli/workplace.h"
#include "company/earlier_file.h"

namespace krnqb::cli {
namespace {

using nlohmann::json;
using tests::ProgramRun;
using tests::RunProgram;
using tests::Words;
using tests::Workplace;
using tests::WriteText;

std::string Account(std::string_view id, std::string_view type, std::string_view parent = {},
                    std::string_view balance = {}) {
  std::string account =
      "<AccountRet><ListID>" + std::string(id) + "</ListID><Name>" + std::string(id) + "</Name>";
  if (!parent.empty()) account += "<ParentRef><ListID>" + std::string(parent) + "</ListID></ParentRef>";
  account += "<AccountType>" + std::string(type) + "</AccountType>";
  if (!balance.empty()) account += "<Balance>" + std::string(balance) + "</Balance>";
  return account + "</AccountRet>";
}

std::string Check(std::string_view id, std::string_view date, std::string_view account,
                  std::string_view amount) {
  return "<CheckRet><TxnID>" + std::string(id) + "</TxnID><TxnDate>" + std::string(date) +
         "</TxnDate><ExpenseLineRet><AccountRef><ListID>" + std::string(account) +
         "</ListID></AccountRef><Amount>" + std::string(amount) + "</Amount></ExpenseLineRet></CheckRet>";
}

class ProfitAndLossCommand : public testing::Test {
 protected:
  // Creates a company whose fiscal year begins in October.
  void Create(const std::string& accounts, const std::string& checks) const {
    ASSERT_EQ(RunProgram({"company", "new", file, "--name", "Acme\n& Sons", "--fiscal-month", "10",
                          "--processor", "1.0"})
                  .code,
              0);
    WriteText(place / "books.xml", "<QBXML><QBXMLMsgsRs><AccountQueryRs>" + accounts +
                                       "</AccountQueryRs><CheckQueryRs>" + checks +
                                       "</CheckQueryRs></QBXMLMsgsRs></QBXML>");
    ASSERT_EQ(RunProgram({"company", "load", file, place / "books.xml"}).code, 0);
  }

  ProgramRun Show(const Words& more = {}) const {
    return RunProgram(tests::With({"company", "profit-and-loss", file}, more));
  }

  const Workplace place;
  const std::string file = place / "acme.qbw";
};

TEST_F(ProfitAndLossCommand, ShowsSectionsAccountsAndWhatIsNotExplained) {
  Create(Account("Sales", "Income", "", "9.00") + Account("Plants", "Income", "Sales") +
             Account("Unused", "Income") + Account("Rent", "Expense", "", "5.00") +
             Account("Office", "Expense", "Rent", "1.00") + Account("Shop", "Expense", "Rent", "-2.00") +
             Account("Wages", "Expense", "", "7.00") + Account("Crew", "Expense", "Wages", "1.00") +
             Account("Loss", "OtherExpense", "", "3.00"),
         Check("1", "2002-10-01", "Sales", "-10.00") + Check("2", "2002-10-02", "Plants", "-2000.50") +
             Check("3", "2002-11-02", "Office", "4.00") + Check("4", "2002-11-02", "Shop", "-4.00") +
             Check("5", "2003-09-30", "Loss", "3.00") + Check("6", "2002-09-30", "Rent", "5.00"));
  const ProgramRun run = Show();
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out,
            R"(Acme & Sons: profit and loss, October 2002 through September 2003, on the accrual basis

Income
  Sales               2,010.50
    Sales - Other        10.00
    Plants            2,000.50
Total Income          2,010.50
Gross Profit          2,010.50
Expenses
  Rent                    0.00
    Office                4.00
    Shop                 -4.00
Total Expenses            0.00
Net Ordinary Income   2,010.50
Other Expenses
  Loss                    3.00
Total Other Expenses      3.00
Net Income            2,007.50

The loaded transactions of all days do not explain these balances:
  Sales: 10.00 of 9.00 (1.00 too much)
  Rent:Office: 4.00 of 1.00 (3.00 too much)
  Rent:Shop: -4.00 of -2.00 (2.00 is missing)
  Wages with its sub-accounts: 0.00 of 8.00 (8.00 is missing)
)");
}

TEST_F(ProfitAndLossCommand, ShowsMonthsOfAPeriod) {
  Create(Account("Sales", "Income"), Check("1", "2002-10-01", "Sales", "-10.00") +
                                         Check("2", "2002-12-31", "Sales", "-2.00") +
                                         Check("3", "2003-01-01", "Sales", "-400.00"));
  EXPECT_EQ(Show({"--from", "2002-10", "--to", "2002-12", "--months"}).out,
            R"(Acme & Sons: profit and loss, October through December 2002, on the accrual basis

                     Oct 02  Nov 02  Dec 02  Total
Income
  Sales               10.00    0.00    2.00  12.00
Total Income          10.00    0.00    2.00  12.00
Gross Profit          10.00    0.00    2.00  12.00
Net Ordinary Income   10.00    0.00    2.00  12.00
Net Income            10.00    0.00    2.00  12.00

No account has a balance that the loaded transactions could explain.
)");
}

TEST_F(ProfitAndLossCommand, SaysThatEveryBalanceIsExplained) {
  Create(Account("Sales", "Income", "", "410.00") + Account("Rent", "Expense"),
         Check("1", "2002-10-01", "Sales", "-10.00") + Check("2", "2003-10-01", "Sales", "-400.00"));
  EXPECT_TRUE(
      Show().out.ends_with("\nThe loaded transactions of all days explain the balance of every account.\n"))
      << Show().out;
}

TEST_F(ProfitAndLossCommand, RefusesAmountsThatAddUpToTooMuch) {
  Create(Account("Sales", "Income") + Account("Cost", "CostOfGoodsSold") + Account("Wear", "CostOfGoodsSold"),
         Check("1", "2002-03-01", "Wear", "1.00"));
  WriteText(place / "sale.xml",
            "<QBXML><QBXMLMsgsRs><ItemQueryRs><ItemInventoryRet><ListID>Pot</ListID><Name>Pot</Name>"
            "<IncomeAccountRef><ListID>Sales</ListID></IncomeAccountRef><COGSAccountRef><ListID>Cost</ListID>"
            "</COGSAccountRef><AverageCost>2.00</AverageCost></ItemInventoryRet></ItemQueryRs>"
            "<InvoiceQueryRs><InvoiceRet><TxnID>2</TxnID><TxnDate>2002-03-02</TxnDate><InvoiceLineRet>"
            "<ItemRef><ListID>Pot</ListID></ItemRef><Quantity>1e300</Quantity><Amount>1.00</Amount>"
            "</InvoiceLineRet></InvoiceRet></InvoiceQueryRs></QBXMLMsgsRs></QBXML>");
  ASSERT_EQ(RunProgram({"company", "load", file, place / "sale.xml"}).code, 0);
  for (const Words& more : {Words{"--from", "2002-03"}, Words{"--from", "2002-03", "--json"}}) {
    const ProgramRun run = Show(more);
    EXPECT_EQ(run.code, 1) << run.out;
    EXPECT_NE(run.err.find("The amounts of the company add up to more than 92,233,720,368,547,758.07"),
              std::string::npos)
        << run.err;
  }
}

TEST_F(ProfitAndLossCommand, CompletesThePeriodToAYear) {
  Create(Account("Sales", "Income"), Check("1", "2002-09-30", "Sales", "-10.00"));
  const auto months = [&](const Words& more) {
    const json all = json::parse(Show(tests::With(more, {"--json"})).out).at("months");
    return all.front().get<std::string>() + " " + all.back().get<std::string>() + " " +
           std::to_string(all.size());
  };
  EXPECT_EQ(months({}), "2001-10 2002-09 12");
  EXPECT_EQ(months({"--from", "2002-02"}), "2002-02 2003-01 12");
  EXPECT_EQ(months({"--to", "2002-02"}), "2001-03 2002-02 12");
  EXPECT_EQ(months({"--from", "9999-11"}), "9999-11 9999-12 2");
  EXPECT_EQ(months({"--from", "2002-02", "--to", "2002-02"}), "2002-02 2002-02 1");
  EXPECT_EQ(months({"--from", "1983-03", "--to", "2003-02"}), "1983-03 2003-02 240");
}

TEST_F(ProfitAndLossCommand, RefusesAPeriodThatIsNone) {
  Create(Account("Sales", "Income"), "");
  EXPECT_EQ(Show({"--from", "2002-02", "--to", "2002-01"}).err,
            "krnqb: wrong usage: --from is later than --to; give a month that is not after --to\n");
  EXPECT_EQ(Show({"--from", "1983-02", "--to", "2003-02"}).err,
            "krnqb: wrong usage: the period has more than 240 months; give a shorter period\n");
  const ProgramRun run = Show();
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, "krnqb: reading the company's books failed: " + file +
                         " has no transactions; load documents with krnqb company load, or give --from\n");
  EXPECT_EQ(Show({"--from", "2002-02"}).code, 0);
}

TEST_F(ProfitAndLossCommand, PrintsJson) {
  Create(Account("Sales", "Income", "", "9.00") + Account("Plants", "Income", "Sales") +
             Account("Rent", "Expense"),
         Check("1", "2002-10-01", "Sales", "-10.00") + Check("2", "2002-11-02", "Plants", "-2.50") +
             Check("3", "2002-11-02", "Rent", "0.75"));
  const json books = json::parse(Show({"--from", "2002-10", "--to", "2002-11", "--json"}).out);
  EXPECT_EQ(books.at("company"), "Acme\n& Sons");
  EXPECT_EQ(books.at("path"), file);
  EXPECT_EQ(books.at("months"), json({"2002-10", "2002-11"}));
  EXPECT_EQ(books.at("income"), json({{"months", {"10.00", "2.50"}}, {"total", "12.50"}}));
  EXPECT_EQ(books.at("net_income"), json({{"months", {"10.00", "1.75"}}, {"total", "11.75"}}));
  EXPECT_EQ(books.at("accounts").at(0),
            json({{"list_id", "Sales"},
                  {"name", "Sales"},
                  {"full_name", "Sales"},
                  {"type", "Income"},
                  {"level", 0},
                  {"own", {{"months", {"10.00", "0.00"}}, {"total", "10.00"}}},
                  {"with_sub_accounts", {{"months", {"10.00", "2.50"}}, {"total", "12.50"}}},
                  {"balance", "9.00"},
                  {"posted", "10.00"},
                  {"unexplained", "-1.00"}}));
  EXPECT_EQ(books.at("accounts").at(1).at("full_name"), "Sales:Plants");
  EXPECT_EQ(books.at("accounts").at(1).at("balance"), nullptr);
  EXPECT_EQ(books.at("accounts").at(1).at("unexplained"), nullptr);
}

TEST_F(ProfitAndLossCommand, WarnsOfACompanyWithoutChecksums) {
  Create(Account("Sales", "Income"), Check("1", "2002-09-30", "Sales", "-10.00"));
  std::filesystem::rename(file, file + ".present");
  company::testing::WriteEarlierFile(file + ".present", file);
  EXPECT_NE(Show().err.find("has no checksums"), std::string::npos) << Show().err;
}

std::string Samples(std::string_view folder) {
  return krnqb::tests::SamplesFolder() + "/" + std::string(folder);
}

// What is not explained, without the table above it.
std::string Unexplained(const std::string& company) {
  const std::string out = RunProgram({"company", "profit-and-loss", company}).out;
  return out.substr(out.find("The loaded"));
}

TEST(NurseryBooks, ExplainPayrollDepreciationAndInterest) {
  const Workplace place;
  const std::string company = place.NurseryYear("1.1");
  EXPECT_EQ(Unexplained(company), R"(The loaded transactions of all days do not explain these balances:
  Cost of Goods Sold:Plants: 10,610.81 of 10,610.73 (0.08 too much)
  Depreciation: 0.00 of 7,260.00 (7,260.00 is missing)
  Job Expenses with its sub-accounts: 5,312.95 of 4,166.30 (1,146.65 too much)
  Payroll Expenses with its sub-accounts: 0.00 of 28,414.80 (28,414.80 is missing)
  Interest Income: 0.00 of 312.60 (312.60 is missing)
)");
  Words load{"company", "load", "--strict", company};
  for (const auto& document : std::filesystem::directory_iterator(Samples("nursery-books"))) {
    load.push_back(document.path().string());
  }
  const ProgramRun loaded = RunProgram(load);
  ASSERT_EQ(loaded.code, 0) << loaded.err;
  EXPECT_EQ(Unexplained(company), R"(The loaded transactions of all days do not explain these balances:
  Job Expenses with its sub-accounts: 5,312.95 of 4,166.30 (1,146.65 too much)
)");
  EXPECT_EQ(RunProgram({"company", "check", company}).code, 0);
}

}  // namespace
}  // namespace krnqb::cli
