#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/amounts_host.h"

// Complete imports with amounts.

namespace krnqb {
namespace {

using fakes::AccountRef;
using fakes::Amount;
using fakes::Element;
using fakes::RecordAnswer;
using fakes::ReportAnswer;
using fakes::ReportRow;
using Texts = std::vector<std::string>;

class GoWithAmounts : public testing::Test {
 protected:
  /// Answers with a bill in February and an invoice in March of 2002.
  void FillYear() {
    host.quickBooks->answers["10 2002-02-01"] = RecordAnswer(
        "BillQueryRs", Element("BillRet", fakes::ExpenseLine(AccountRef("E-3") + Amount("120.50"))));
    host.quickBooks->answers["20 2002-03-01"] = RecordAnswer(
        "InvoiceQueryRs",
        Element("InvoiceRet",
                Element("InvoiceLineRet", fakes::ItemRef("IT-3") + Amount("40.00") + fakes::Quantity("3"))));
  }
  /// Returns a row with the same text in every month except one.
  static Texts Months(const std::string& name, const std::string& usual, std::size_t month,
                      const std::string& other) {
    Texts cells = fakes::Cells(name, 12, usual);
    cells.at(month) = other;
    return cells;
  }
  int RequestCount(const std::string& question) const {
    return host.journal->Count("ProcessRequest " + question);
  }
  bool WasRequested(const std::string& number) const {
    return host.journal->Text().find("ProcessRequest " + number + " ") != std::string::npos;
  }

  fakes::AmountsHost host;
};

TEST_F(GoWithAmounts, WritesTransactionsIntoThePlan) {
  FillYear();
  host.IncludeAccounts();
  host.component.GrowthRateExpenses(7);
  host.component.GrowthRateIncome(10);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.component.ErrorNumber(), 0);
  const Texts utilities = host.PlannedCells("0600", "db_income_range_cat3", "Utilities");
  ASSERT_EQ(utilities.size(), 14U);
  EXPECT_EQ(utilities[1], "0.07");
  EXPECT_EQ(utilities[2], "=0* (1 + B7)");
  EXPECT_EQ(utilities[3], "=120.5* (1 + B7)");
  EXPECT_EQ(host.ActualCells("0600", "db_income_range_cat3", "Utilities"), Months("*null*", "0", 2, "120.5"));
  EXPECT_EQ(host.PlannedCells("0400", "db_sales_values_sales", "Plants")[4], "=40 * (1 + B7)");
  EXPECT_EQ(host.ActualCells("0400", "db_sales_values_sales", "Plants"), Months("*null*", "0", 3, "40"));
  EXPECT_EQ(host.PlannedCells("0400", "db_sales_values_costs", "Seeds")[4], "=7.5* (1 + B7)");
  EXPECT_EQ(host.ActualCells("0400", "db_sales_values_costs", "Seeds"), Months("*null*", "0", 3, "7.5"));
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
}

TEST_F(GoWithAmounts, RunsBothPassesIfEitherGroupIsIncluded) {
  host.component.IncludeIncomeAccounts(true);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(RequestCount("10 2002-12-01 2002-12-31"), 1);
  EXPECT_EQ(RequestCount("21 2002-01-01 2002-01-31"), 1);
  host.journal->Clear();
  host.component.IncludeIncomeAccounts(false);
  host.component.IncludeExpenseAccounts(true);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(RequestCount("10 2002-12-01 2002-12-31"), 1);
  EXPECT_EQ(RequestCount("21 2002-01-01 2002-01-31"), 1);
}

TEST_F(GoWithAmounts, WritesReportsIntoThePlan) {
  host.quickBooks->majorVersion = 2;
  host.quickBooks->answers["300"] = ReportAnswer(ReportRow("4000 &#183; Plants", {"1", "2", "4"}));
  host.quickBooks->answers["320"] = ReportAnswer(ReportRow("Freight", {"8"}));
  host.quickBooks->answers["310"] = ReportAnswer(ReportRow("Rent", {"16", "32"}));
  host.IncludeAccounts();
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.ActualCells("0400", "db_sales_values_sales", "Plants"),
            (Texts{"*null*", "1", "2", "4", "0", "0", "0", "0", "0", "0", "0", "0", "0"}));
  EXPECT_EQ(host.ActualCells("0400", "db_sales_values_costs", "Freight"), Months("*null*", "0", 1, "8"));
  EXPECT_EQ(host.PlannedCells("0600", "db_income_range_cat3", "Rent")[3], "=32* (1 + B6)");
  EXPECT_FALSE(WasRequested("10")) << "no transactions are read";
}

TEST_F(GoWithAmounts, WritesGrowthWithoutAmountsForAnUnknownVersion) {
  FillYear();
  host.quickBooks->majorVersion = 3;
  host.quickBooks->answers["310"] = ReportAnswer(ReportRow("Rent", {"16"}));
  host.IncludeAccounts();
  host.component.GrowthRateExpenses(7);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.component.QBMajorVersion(), 3);
  for (const char* number : {"10", "11", "12", "20", "21", "300", "310", "320"}) {
    EXPECT_FALSE(WasRequested(number)) << number;
  }
  Texts rent = fakes::Cells("Rent", 13, "=0* (1 + B6)");
  rent[1] = "0.07";
  EXPECT_EQ(host.PlannedCells("0600", "db_income_range_cat3", "Rent"), rent);
  EXPECT_EQ(host.PlannedCells("0400", "db_sales_values_sales", "Tools")[2], "=0 * (1 + B8)");
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
}

TEST_F(GoWithAmounts, EndsAtAMalformedReport) {
  host.quickBooks->majorVersion = 2;
  host.quickBooks->answers["300"] = ReportAnswer(ReportRow("Plants", {"1"}));
  host.quickBooks->answers["310"] = "no document";
  host.IncludeAccounts();
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.component.ErrorNumber(), error_number::objectNotSet);
  EXPECT_EQ(host.component.ErrorDescription(), "Object variable or With block variable not set");
  EXPECT_EQ(host.journal->Count("AfterImport"), 0);
  EXPECT_EQ(host.ActualCells("0400", "db_sales_values_sales", "Plants"), fakes::Cells("*null*", 12, "0"))
      << "the rows are loaded before the failure, the amounts are not";
}

TEST_F(GoWithAmounts, EndsAtAReportWithASumOutOfRange) {
  host.quickBooks->majorVersion = 2;
  host.quickBooks->answers["310"] =
      ReportAnswer(ReportRow("Rent", {"1.7976931348623157E+308"}) + ReportRow("Rent", {"1E+308"}));
  host.component.IncludeExpenseAccounts(true);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.component.ErrorNumber(), error_number::overflow);
  EXPECT_EQ(host.journal->Count("AfterImport"), 0);
}

// Past performance.

class GoWithPastPerformance : public GoWithAmounts {
 protected:
  GoWithPastPerformance() {
    host.component.IncludePastPerformance(true);
    host.quickBooks->answers["60"] = fakes::AccountAnswer("60", {AllTypes("")});
  }

  /// Returns a top-level account of each type except one, each with a balance of 5.
  static std::string AllTypes(const std::string& without) {
    std::string records;
    for (const std::string type :
         {"Bank", "AccountsReceivable", "OtherAsset", "OtherCurrentAsset", "FixedAsset", "AccountsPayable",
          "CreditCard", "OtherCurrentLiability", "LongTermLiability", "Equity", "CostOfGoodsSold"}) {
      if (type == without) continue;
      records += Element("AccountRet", Element("Name", type) + Element("Sublevel", "0") +
                                           Element("AccountType", type) + Element("TotalBalance", "5.00"));
    }
    return records;
  }
  Texts Row(const std::string& block, std::size_t row) const {
    return fakes::CellsOf(host.Table("20", "0800"), block, row);
  }
};

TEST_F(GoWithPastPerformance, LoadsTheFiguresOfThreeYears) {
  FillYear();
  host.IncludeAccounts();
  EXPECT_TRUE(host.component.Go());
  Texts bank = fakes::Cells("name", 14, "old");
  bank[1] = bank[2] = bank[3] = "5";
  EXPECT_EQ(Row("db_pastperformance_shorttermassets", 0), bank);
  Texts income = fakes::Cells("name", 14, "old");
  income[1] = income[2] = "0";
  income[3] = "40";
  EXPECT_EQ(Row("db_pastperformance_sales", 0), income);
  EXPECT_EQ(Row("db_pastperformance_sales", 1), income) << "no costs are read from transactions";
  EXPECT_EQ(host.component.ErrorNumber(), 0);
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
}

TEST_F(GoWithPastPerformance, KeepsTheAmountsOfTheYearInTheirTables) {
  FillYear();
  host.IncludeAccounts();
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.ActualCells("0400", "db_sales_values_sales", "Plants"), Months("*null*", "0", 3, "40"));
}

TEST_F(GoWithPastPerformance, FillsFourteenColumnsForCOR) {
  host.component.KRNProduct(QBKRN_COR);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(Row("db_pastperformance_shorttermassets", 0).at(3), "5");
  EXPECT_EQ(Row("db_pastperformance_shorttermassets", 0).at(14), "0");
}

TEST_F(GoWithPastPerformance, IsNotImportedForBRI) {
  host.component.KRNProduct(QBKRN_BRI);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(RequestCount("60"), 0);
  EXPECT_EQ(host.Table("20", "0800"), fakes::PastPerformanceTable());
}

TEST_F(GoWithPastPerformance, IsNotImportedWithoutBalances) {
  host.component.BalancesImport(BalImport_None);
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(RequestCount("60"), 0);
  EXPECT_EQ(host.Table("20", "0800"), fakes::PastPerformanceTable());
  EXPECT_TRUE(host.planContent->loaded.empty());
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
}

TEST_F(GoWithPastPerformance, LoadsTheFiguresWrittenBeforeAMissingType) {
  host.quickBooks->answers["60"] = fakes::AccountAnswer("60", {AllTypes("OtherAsset")});
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(Row("db_pastperformance_shorttermassets", 0).at(1), "5");
  EXPECT_EQ(Row("db_pastperformance_shorttermassets", 0).at(2), "old");
  EXPECT_EQ(Row("db_pastperformance_longtermassets", 0).at(1), "old");
  EXPECT_EQ(host.component.ErrorNumber(), 0);
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
}

TEST_F(GoWithPastPerformance, LoadsTheEmptyTextIfTheAccountRequestIsRefused) {
  host.journal->Fail("ProcessRequest 60", Error(-2147220477, "unexpected"));
  EXPECT_TRUE(host.component.Go());
  EXPECT_EQ(host.journal->Count("Deserialize nothing"), 1);
  EXPECT_EQ(host.Table("20", "0800"), fakes::PastPerformanceTable());
  EXPECT_EQ(host.component.ErrorNumber(), 0) << "collecting does not set the error pair";
  EXPECT_EQ(host.journal->Count("AfterImport"), 1);
}

TEST_F(GoWithPastPerformance, EndsInTheFirstPeriodOfReportsWithoutExpenseAccounts) {
  host.quickBooks->majorVersion = 2;
  host.quickBooks->answers["300"] = ReportAnswer(ReportRow("Plants", {"3"}));
  EXPECT_TRUE(host.component.Go());
  Texts income = fakes::Cells("name", 14, "old");
  income[1] = "3";
  income[2] = income[3] = "0";
  EXPECT_EQ(Row("db_pastperformance_sales", 0), income) << "no type is missing, so every figure is written";
  EXPECT_FALSE(WasRequested("330 Bank"));
  EXPECT_EQ(host.component.ErrorNumber(), 0);
}

}  // namespace
}  // namespace krnqb
