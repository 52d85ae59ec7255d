#include <gtest/gtest.h>

#include <algorithm>
#include <nlohmann/json.hpp>

#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using nlohmann::json;
using tests::ProgramRun;
using tests::RunProgram;
using tests::With;
using tests::Words;
using tests::Workplace;
using tests::WriteText;

const Words everything{"--expenses", "--income", "--balances", "all", "--quiet"};

// A company whose only transaction is in the plan exactly.
class AgreeingPlan : public testing::Test {
 protected:
  AgreeingPlan() {
    WriteText(place / "books.xml", R"(<QBXML><QBXMLMsgsRs><AccountQueryRs><AccountRet><ListID>1</ListID>
<Name>Rent &amp; Lease</Name><FullName>Rent &amp; Lease</FullName><Sublevel>0</Sublevel>
<AccountType>Expense</AccountType></AccountRet><AccountRet><ListID>4</ListID>
<Name>Sales</Name><FullName>Sales</FullName><Sublevel>0</Sublevel>
<AccountType>Income</AccountType></AccountRet><AccountRet><ListID>5</ListID>
<Name>Goods</Name><FullName>Goods</FullName><Sublevel>0</Sublevel>
<AccountType>CostOfGoodsSold</AccountType></AccountRet></AccountQueryRs>
<CheckQueryRs><CheckRet><TxnID>2</TxnID><TxnDate>2002-03-04</TxnDate><ExpenseLineRet><TxnLineID>3</TxnLineID>
<AccountRef><ListID>1</ListID></AccountRef><Amount>950.00</Amount></ExpenseLineRet></CheckRet></CheckQueryRs>
</QBXMLMsgsRs></QBXML>)");
    RunProgram({"company", "new", company, "--name", "Small", "--fiscal-month", "1", "--processor", "1.1"});
    RunProgram({"company", "load", company, place / "books.xml"});
    RunProgram({"plan", "new", plan, "--product", "ald", "--start", "2003-01"});
    RunProgram(With({"import", "--company", company, "--plan", plan}, everything));
  }
  ProgramRun Run(const Words& more = {}) const {
    return RunProgram(With({"reconcile", "--company", company, "--plan", plan}, more));
  }

  const Workplace place;
  const std::string company = place / "small.qbw";
  const std::string plan = place / "small.kpf";
};

TEST_F(AgreeingPlan, ReturnsZero) {
  const ProgramRun run = Run();
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_NE(run.out.find("Books: the company's own transactions\n"
                         "\n"
                         "                   Plan    Books  Difference\n"
                         "Expenses\n"
                         "  Rent & Lease   950.00   950.00        0.00\n"
                         "Total expenses   950.00   950.00        0.00\n"
                         "Net income      -950.00  -950.00        0.00\n"
                         "\n"),
            std::string::npos)
      << run.out;
  EXPECT_TRUE(run.out.ends_with("\nThe plan agrees with the books.\n")) << run.out;
  EXPECT_EQ(json::parse(Run({"--json"}).out).at("result"), "agrees");
}

TEST_F(AgreeingPlan, DiffersBeyondTheTolerance) {
  WriteText(plan, tests::Replaced(tests::ReadText(plan), "<c>950</c>", "<c>950.02</c>"));
  EXPECT_EQ(Run().code, 4);
  EXPECT_EQ(Run({"--tolerance", "0.019999"}).code, 4);
  const ProgramRun run = Run({"--tolerance", "0.02"});
  EXPECT_EQ(run.code, 0);
  EXPECT_TRUE(run.out.ends_with("\nThe plan agrees with the books within the tolerance.\n")) << run.out;
  EXPECT_EQ(Run({"--tolerance", "0"}).code, 4);
}

TEST_F(AgreeingPlan, ShowsMonthsBelowTheirAccount) {
  EXPECT_NE(Run({"--months"})
                .out.find("Expenses\n"
                          "  Rent & Lease\n"
                          "    March 2002   950.00   950.00        0.00\n"),
            std::string::npos)
      << Run({"--months"}).out;
}

struct RefusedCase {
  Words more;
  int code;
  std::string message;
};

TEST_F(AgreeingPlan, RefusesWhatCannotBeCompared) {
  WriteText(place / "bad.csv", "nonsense\n");
  WriteText(place / "other.csv",
            "Profit and Loss\nJanuary through December 2001\n,Jan - Dec 01\nExpense\n"
            "  Rent & Lease,5.00\nTotal Expense,5.00\n");
  const Words source{"--company", company, "--plan", plan};
  const std::vector<RefusedCase> cases{
      {{"--plan", plan},
       2,
       "no company is given; give --company FILE, --quickbooks on Windows, or --replay FILE"},
      {With(source, {"--replay", "x"}), 2, "--company and --replay are both given; give one of them"},
      {{"--company", company}, 2, "--plan"},
      {With(source, {"--tolerance", "-1"}), 2, "--tolerance \"-1\" is not an amount of 0 or more"},
      {With(source, {"--tolerance", "x"}), 2, "--tolerance \"x\" is not an amount of 0 or more"},
      {With(source, {"--import-start", "2002"}), 2, "--import-start"},
      {{"--company", place / "none.qbw", "--plan", plan}, 1, "There is no company file"},
      {{"--company", company, "--plan", place / "none.kpf"}, 1, "cannot open the plan"},
      {{"--replay", place / "none", "--plan", plan}, 1, "opening the recording failed"},
      {With(source, {"--profit-and-loss", place / "none.csv"}), 1,
       "none.csv: No such file or directory; check the path and its permissions"},
      {With(source, {"--profit-and-loss", place / "bad.csv"}), 1,
       "bad.csv: no line has column titles such as"},
      {With(source, {"--profit-and-loss", place / "other.csv"}), 1,
       "other.csv: it does not cover the twelve months from 2002-01; give a profit and loss of these "
       "twelve"}};
  for (const RefusedCase& refused : cases) {
    const ProgramRun run = RunProgram(With({"reconcile"}, refused.more));
    EXPECT_EQ(run.code, refused.code) << run.err;
    EXPECT_NE(run.err.find(refused.message), std::string::npos) << run.err;
    EXPECT_EQ(std::ranges::count(run.err, '\n'), 1) << run.err;
    EXPECT_EQ(run.out, "");
  }
}

TEST_F(AgreeingPlan, RefusesBooksWhoseAmountsAreTooLarge) {
  WriteText(place / "sale.xml",
            "<QBXML><QBXMLMsgsRs><ItemQueryRs><ItemInventoryRet><ListID>6</ListID><Name>Pot</Name>"
            "<IncomeAccountRef><ListID>4</ListID></IncomeAccountRef><COGSAccountRef><ListID>5</ListID>"
            "</COGSAccountRef><AverageCost>2.00</AverageCost></ItemInventoryRet></ItemQueryRs>"
            "<InvoiceQueryRs><InvoiceRet><TxnID>7</TxnID><TxnDate>2002-03-02</TxnDate><InvoiceLineRet>"
            "<ItemRef><ListID>6</ListID></ItemRef><Quantity>1e300</Quantity><Amount>1.00</Amount>"
            "</InvoiceLineRet></InvoiceRet></InvoiceQueryRs></QBXMLMsgsRs></QBXML>");
  ASSERT_EQ(RunProgram({"company", "load", company, place / "sale.xml"}).code, 0);
  const ProgramRun run = Run();
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err,
            "krnqb: reconciling failed: an amount exceeds 9,223,372,036,854.78; run krnqb company "
            "check\n");
}

TEST_F(AgreeingPlan, FailsInItsOwnWordsIfARecordingLacksTheMonths) {
  const std::string copy = place / "ald.kpf";
  ASSERT_EQ(RunProgram(With({"import", "--company", company, "--plan", copy, "--record", place / "exchange"},
                            everything))
                .code,
            0);
  const ProgramRun run =
      RunProgram({"reconcile", "--replay", place / "exchange", "--plan", copy, "--import-start", "2000-01"});
  EXPECT_EQ(run.code, 1);
  EXPECT_TRUE(run.err.starts_with("krnqb: reconciling failed: the recording ")) << run.err;
  EXPECT_TRUE(
      run.err.ends_with("; give the --import-start with which it was recorded, or record the company "
                        "again\n"))
      << run.err;
}

}  // namespace
}  // namespace krnqb::cli
