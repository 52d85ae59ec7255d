#include "company/reports/testing.h"

namespace krnqb::company {
namespace {

using testing::AccountDocument;
using testing::AccountFields;
using testing::ColumnTitlesOf;
using testing::Element;
using testing::ExpenseLine;
using testing::ItemLine;
using testing::Preferences;
using testing::ProfitAndLossRequest;
using testing::Reference;
using testing::Response;
using testing::RowsOf;
using testing::TextsOf;
using testing::TransactionDocument;
using testing::TransactionRecord;

using Texts = std::vector<std::string>;

class CompanyProfitAndLoss : public testing::CompanyTest {
 protected:
  void LoadAccounts(const std::vector<AccountFields>& accounts) {
    company.Load("accounts.xml", AccountDocument(accounts));
  }

  // A check with one line for an account.
  void Spend(std::string_view date, std::string_view account, std::string_view amount) {
    company.Load("check.xml",
                 TransactionDocument("Check", TransactionRecord("Check", std::to_string(++checks), date,
                                                                ExpenseLine(account, amount))));
  }

  std::string Expenses(std::string_view from, std::string_view to) const {
    return company.Answer(ProfitAndLossRequest("OrdinaryExpense", from, to));
  }

  CompanyFile company = NewCompany("2.0");
  int checks = 0;
};

TEST_F(CompanyProfitAndLoss, IsWrittenExactly) {
  LoadAccounts({{"auto", "Expense", "Automobile"},
                {"fuel", "Expense", "Fuel", "auto"},
                {"rent", "Expense", "Rent &amp; &quot;Lease&quot;"}});
  Spend("2002-01-05", "fuel", "12.50");
  Spend("2002-02-28", "rent", "-3.00");
  EXPECT_EQ(
      Expenses("2002-01-01", "2002-02-28"),
      Response(R"(<GeneralSummaryReportQueryRs statusCode="0" statusSeverity="Info" statusMessage="Status OK">
<ReportRet>
<ReportTitle>Profit &amp; Loss</ReportTitle>
<ReportSubtitle>January through February 2002</ReportSubtitle>
<ReportBasis>Accrual</ReportBasis>
<NumRows>9</NumRows>
<NumColumns>4</NumColumns>
<NumColTitleRows>1</NumColTitleRows>
<ColDesc colID="1" dataType="STRTYPE">
<ColTitle titleRow="1" />
<ColType>Blank</ColType>
</ColDesc>
<ColDesc colID="2" dataType="AMTTYPE">
<ColTitle titleRow="1" value="Jan 02" />
<ColType>Amount</ColType>
</ColDesc>
<ColDesc colID="3" dataType="AMTTYPE">
<ColTitle titleRow="1" value="Feb 02" />
<ColType>Amount</ColType>
</ColDesc>
<ColDesc colID="4" dataType="AMTTYPE">
<ColTitle titleRow="1" value="TOTAL" />
<ColType>Amount</ColType>
</ColDesc>
<ReportData>
<TextRow rowNumber="1" value="Ordinary Income/Expense" />
<TextRow rowNumber="2" value="Expense" />
<TextRow rowNumber="3" value="Automobile" />
<DataRow rowNumber="4">
<RowData rowType="account" value="Automobile:Fuel" />
<ColData colID="1" value="Fuel" />
<ColData colID="2" value="12.50" />
<ColData colID="3" value="0.00" />
<ColData colID="4" value="12.50" />
</DataRow>
<SubtotalRow rowNumber="5">
<RowData rowType="account" value="Automobile" />
<ColData colID="1" value="Total Automobile" />
<ColData colID="2" value="12.50" />
<ColData colID="3" value="0.00" />
<ColData colID="4" value="12.50" />
</SubtotalRow>
<DataRow rowNumber="6">
<RowData rowType="account" value="Rent &amp; &quot;Lease&quot;" />
<ColData colID="1" value="Rent &amp; &quot;Lease&quot;" />
<ColData colID="2" value="0.00" />
<ColData colID="3" value="-3.00" />
<ColData colID="4" value="-3.00" />
</DataRow>
<SubtotalRow rowNumber="7">
<ColData colID="1" value="Total Expense" />
<ColData colID="2" value="12.50" />
<ColData colID="3" value="-3.00" />
<ColData colID="4" value="9.50" />
</SubtotalRow>
<SubtotalRow rowNumber="8">
<ColData colID="1" value="Net Ordinary Income" />
<ColData colID="2" value="-12.50" />
<ColData colID="3" value="3.00" />
<ColData colID="4" value="-9.50" />
</SubtotalRow>
<TotalRow rowNumber="9">
<ColData colID="1" value="Net Income" />
<ColData colID="2" value="-12.50" />
<ColData colID="3" value="3.00" />
<ColData colID="4" value="-9.50" />
</TotalRow>
</ReportData>
</ReportRet>
</GeneralSummaryReportQueryRs>
)"));
}

TEST_F(CompanyProfitAndLoss, HasNoRowsWithoutPostings) {
  LoadAccounts({{"rent", "Expense", "Rent", "", "", "500.00"}});
  Spend("2001-12-31", "rent", "12.50");
  Spend("2002-02-01", "rent", "12.50");
  EXPECT_EQ(
      Expenses("2002-01-01", "2002-01-31"),
      Response(R"(<GeneralSummaryReportQueryRs statusCode="0" statusSeverity="Info" statusMessage="Status OK">
<ReportRet>
<ReportTitle>Profit &amp; Loss</ReportTitle>
<ReportSubtitle>January 2002</ReportSubtitle>
<ReportBasis>Accrual</ReportBasis>
<NumRows>0</NumRows>
<NumColumns>2</NumColumns>
<NumColTitleRows>1</NumColTitleRows>
<ColDesc colID="1" dataType="STRTYPE">
<ColTitle titleRow="1" />
<ColType>Blank</ColType>
</ColDesc>
<ColDesc colID="2" dataType="AMTTYPE">
<ColTitle titleRow="1" value="Jan 02" />
<ColType>Amount</ColType>
</ColDesc>
<ReportData />
</ReportRet>
</GeneralSummaryReportQueryRs>
)"));
}

TEST_F(CompanyProfitAndLoss, NestsAccountsAndSeparatesAParentsOwnAmounts) {
  LoadAccounts({{"auto", "Expense", "Automobile"},
                {"fuel", "Expense", "Fuel", "auto"},
                {"diesel", "Expense", "Diesel", "fuel"},
                {"petrol", "Expense", "Petrol", "fuel"},
                {"tires", "Expense", "Tires", "auto"},
                {"travel", "Expense", "Travel"},
                {"meals", "Expense", "Meals", "travel"},
                {"empty", "Expense", "Empty"},
                {"under", "Expense", "Under", "empty"}});
  Spend("2002-01-05", "auto", "1.00");
  Spend("2002-01-05", "fuel", "10.00");
  Spend("2002-01-06", "diesel", "100.00");
  Spend("2002-01-07", "travel", "1000.00");
  EXPECT_EQ(RowsOf(Expenses("2002-01-01", "2002-01-31")),
            (Texts{"TextRow | Ordinary Income/Expense", "TextRow | Expense", "TextRow | Automobile",
                   "TextRow | Fuel", "DataRow Automobile:Fuel:Diesel | Diesel | 100.00",
                   "DataRow Automobile:Fuel | Fuel - Other | 10.00",
                   "SubtotalRow Automobile:Fuel | Total Fuel | 110.00",
                   "DataRow Automobile | Automobile - Other | 1.00",
                   "SubtotalRow Automobile | Total Automobile | 111.00", "TextRow | Travel",
                   "DataRow Travel | Travel - Other | 1000.00", "SubtotalRow Travel | Total Travel | 1000.00",
                   "SubtotalRow | Total Expense | 1111.00", "SubtotalRow | Net Ordinary Income | -1111.00",
                   "TotalRow | Net Income | -1111.00"}));
}

TEST_F(CompanyProfitAndLoss, ShowsAccountNumbersIfTheyAreInUse) {
  LoadAccounts({{"auto", "Expense", "Automobile", "", "6000"},
                {"fuel", "Expense", "Fuel", "auto", "6010"},
                {"rent", "Expense", "Rent"}});
  Spend("2002-01-05", "auto", "1.00");
  Spend("2002-01-05", "fuel", "2.00");
  Spend("2002-01-05", "rent", "3.00");
  const auto accountRows = [&] {
    Texts rows = RowsOf(Expenses("2002-01-01", "2002-01-31"));
    return Texts(rows.begin() + 2, rows.end() - 3);
  };
  const Texts plain = {"TextRow | Automobile", "DataRow Automobile:Fuel | Fuel | 2.00",
                       "DataRow Automobile | Automobile - Other | 1.00",
                       "SubtotalRow Automobile | Total Automobile | 3.00", "DataRow Rent | Rent | 3.00"};
  EXPECT_EQ(accountRows(), plain);
  company.Load("preferences.xml", Preferences("false"));
  EXPECT_EQ(accountRows(), plain);
  for (const std::string_view yes : {"true", "1"}) {
    company.Load("preferences.xml", Preferences(yes));
    EXPECT_EQ(accountRows(),
              (Texts{"TextRow | 6000 \u00B7 Automobile",
                     "DataRow 6000 \u00B7 Automobile:6010 \u00B7 Fuel | 6010 \u00B7 Fuel | 2.00",
                     "DataRow 6000 \u00B7 Automobile | 6000 \u00B7 Automobile - Other | 1.00",
                     "SubtotalRow 6000 \u00B7 Automobile | Total 6000 \u00B7 Automobile | 3.00",
                     "DataRow Rent | Rent | 3.00"}));
  }
  EXPECT_NE(Expenses("2002-01-01", "2002-01-31").find("value=\"6010 &#183; Fuel\""), std::string::npos);
}

TEST_F(CompanyProfitAndLoss, CoversAFiscalYearThatCrossesTheCalendarYear) {
  LoadAccounts({{"rent", "Expense", "Rent"}});
  Spend("2002-03-31", "rent", "1.00");
  Spend("2002-04-01", "rent", "20.00");
  Spend("2003-01-15", "rent", "300.00");
  Spend("2003-03-31", "rent", "4000.00");
  Spend("2003-04-01", "rent", "50000.00");
  const std::string answer = Expenses("2002-04-01", "2003-03-31");
  EXPECT_EQ(ColumnTitlesOf(answer),
            (Texts{"Apr 02", "May 02", "Jun 02", "Jul 02", "Aug 02", "Sep 02", "Oct 02", "Nov 02", "Dec 02",
                   "Jan 03", "Feb 03", "Mar 03", "TOTAL"}));
  EXPECT_EQ(RowsOf(answer).at(2),
            "DataRow Rent | Rent | 20.00 | 0.00 | 0.00 | 0.00 | 0.00 | 0.00 | 0.00 | 0.00 | 0.00 | 300.00 | "
            "0.00 | 4000.00 | 4320.00");
}

TEST_F(CompanyProfitAndLoss, IncludesTheLeapDayInFebruary) {
  LoadAccounts({{"rent", "Expense", "Rent"}});
  Spend("2004-02-29", "rent", "7.00");
  EXPECT_EQ(RowsOf(Expenses("2004-02-01", "2004-02-29")).at(2), "DataRow Rent | Rent | 7.00");
  EXPECT_EQ(RowsOf(Expenses("2004-02-01", "2004-02-28")), Texts{});
  EXPECT_EQ(RowsOf(Expenses("2004-01-01", "2004-03-31")).at(2),
            "DataRow Rent | Rent | 0.00 | 7.00 | 0.00 | 7.00");
}

TEST_F(CompanyProfitAndLoss, ExtendsAnOpenPeriodToTheTransactions) {
  EXPECT_EQ(ColumnTitlesOf(Expenses("", "")), Texts{});
  EXPECT_EQ(TextsOf(Expenses("", ""), "//ReportSubtitle"), Texts{"All Transactions"});
  LoadAccounts({{"rent", "Expense", "Rent"}, {"bank", "Bank", "Bank"}});
  Spend("2001-12-15", "bank", "1.00");
  Spend("2002-02-10", "rent", "5.00");
  EXPECT_EQ(ColumnTitlesOf(Expenses("", "")), (Texts{"Dec 01", "Jan 02", "Feb 02", "TOTAL"}));
  EXPECT_EQ(RowsOf(Expenses("", "")).at(2), "DataRow Rent | Rent | 0.00 | 0.00 | 5.00 | 5.00");
  EXPECT_EQ(ColumnTitlesOf(Expenses("2002-01-01", "")), (Texts{"Jan 02", "Feb 02", "TOTAL"}));
  EXPECT_EQ(ColumnTitlesOf(Expenses("", "2001-12-31")), Texts{"Dec 01"});
  EXPECT_EQ(ColumnTitlesOf(Expenses("2002-03-01", "")), Texts{});
  EXPECT_EQ(RowsOf(Expenses("2002-03-01", "")), Texts{});
}

TEST_F(CompanyProfitAndLoss, ShowsTheAccountsOfEachFilterWithTheirNormalSign) {
  LoadAccounts({{"sales", "Income", "Sales"},
                {"cost", "CostOfGoodsSold", "Cost of Plants"},
                {"rent", "Expense", "Rent"},
                {"interest", "OtherIncome", "Interest"},
                {"fines", "OtherExpense", "Fines"},
                {"stock", "OtherCurrentAsset", "Stock"}});
  company.Load(
      "items.xml",
      Response(Element("ItemQueryRs",
                       Element("ItemInventoryRet",
                               Element("ListID", "pot") + Reference("IncomeAccountRef", "sales") +
                                   Reference("COGSAccountRef", "cost") +
                                   Reference("AssetAccountRef", "stock") + Element("AverageCost", "1.25")))));
  company.Load("receipts.xml",
               TransactionDocument("SalesReceipt",
                                   TransactionRecord("SalesReceipt", "1", "2002-01-31",
                                                     ItemLine("SalesReceiptLineRet", "pot", "30.00", "4"))));
  Spend("2002-01-10", "rent", "8.00");
  Spend("2002-01-10", "interest", "-2.00");
  Spend("2002-01-10", "fines", "9.00");
  Spend("2002-01-20", "sales", "1.50");
  struct Case {
    std::string_view filter;
    Texts rows;
  };
  const std::vector<Case> cases = {
      {"OrdinaryIncome",
       {"TextRow | Ordinary Income/Expense", "TextRow | Income", "DataRow Sales | Sales | 28.50",
        "SubtotalRow | Total Income | 28.50", "SubtotalRow | Net Ordinary Income | 28.50",
        "TotalRow | Net Income | 28.50"}},
      {"CostOfSales",
       {"TextRow | Ordinary Income/Expense", "TextRow | Cost of Goods Sold",
        "DataRow Cost of Plants | Cost of Plants | 5.00", "SubtotalRow | Total COGS | 5.00",
        "SubtotalRow | Gross Profit | -5.00", "SubtotalRow | Net Ordinary Income | -5.00",
        "TotalRow | Net Income | -5.00"}},
      {"OrdinaryExpense",
       {"TextRow | Ordinary Income/Expense", "TextRow | Expense", "DataRow Rent | Rent | 8.00",
        "SubtotalRow | Total Expense | 8.00", "SubtotalRow | Net Ordinary Income | -8.00",
        "TotalRow | Net Income | -8.00"}},
      {"OtherIncome",
       {"TextRow | Other Income/Expense", "TextRow | Other Income", "DataRow Interest | Interest | 2.00",
        "SubtotalRow | Total Other Income | 2.00", "SubtotalRow | Net Other Income | 2.00",
        "TotalRow | Net Income | 2.00"}},
      {"OtherExpense",
       {"TextRow | Other Income/Expense", "TextRow | Other Expense", "DataRow Fines | Fines | 9.00",
        "SubtotalRow | Total Other Expense | 9.00", "SubtotalRow | Net Other Income | -9.00",
        "TotalRow | Net Income | -9.00"}},
      {"OtherCurrentAsset", {}},
      {"NonPosting", {}},
  };
  for (const auto& [filter, rows] : cases) {
    SCOPED_TRACE(filter);
    EXPECT_EQ(RowsOf(company.Answer(ProfitAndLossRequest(filter, "2002-01-01", "2002-01-31"))), rows);
  }
}

TEST_F(CompanyProfitAndLoss, AcceptsItemsLoadedAfterTheirSales) {
  LoadAccounts({{"fees", "Income", "Fees"}});
  company.Load(
      "invoices.xml",
      TransactionDocument("Invoice", TransactionRecord("Invoice", "1", "2002-01-31",
                                                       ItemLine("InvoiceLineRet", "work", "30.00"))));
  const auto income = [&] {
    return RowsOf(company.Answer(ProfitAndLossRequest("OrdinaryIncome", "2002-01-01", "2002-01-31")));
  };
  EXPECT_EQ(income(), Texts{});
  company.Load("items.xml",
               Response(Element("ItemQueryRs",
                                Element("ItemServiceRet",
                                        Element("ListID", "work") +
                                            Element("SalesOrPurchase", Reference("AccountRef", "fees"))))));
  EXPECT_EQ(income().at(2), "DataRow Fees | Fees | 30.00");
}

TEST_F(CompanyProfitAndLoss, FollowsAReplacedRecord) {
  LoadAccounts({{"rent", "Expense", "Rent"}, {"fuel", "Expense", "Fuel"}});
  Spend("2002-01-05", "rent", "1.00");
  checks = 0;
  Spend("2002-02-05", "fuel", "2.00");
  const Texts rows = RowsOf(Expenses("2002-01-01", "2002-02-28"));
  ASSERT_EQ(rows.size(), 6U);
  EXPECT_EQ(rows[2], "DataRow Fuel | Fuel | 0.00 | 2.00 | 2.00");
}

TEST_F(CompanyProfitAndLoss, ShowsAccountsInACycleOfParents) {
  LoadAccounts({{"a", "Expense", "A", "b"}, {"b", "Expense", "B", "a"}});
  Spend("2002-01-05", "a", "1.00");
  Spend("2002-01-05", "b", "2.00");
  const Texts rows = RowsOf(Expenses("2002-01-01", "2002-01-31"));
  ASSERT_EQ(rows.size(), 9U);
  EXPECT_EQ(rows[6], "SubtotalRow | Total Expense | 3.00");
}

}  // namespace
}  // namespace krnqb::company
