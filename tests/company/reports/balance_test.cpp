#include "company/reports/testing.h"

namespace krnqb::company {
namespace {

using testing::AccountDocument;
using testing::BalanceSheetRequest;
using testing::ColumnTitlesOf;
using testing::Element;
using testing::ExpenseLine;
using testing::ItemLine;
using testing::Reference;
using testing::Response;
using testing::RowsOf;
using testing::TransactionDocument;
using testing::TransactionRecord;

using Texts = std::vector<std::string>;

class CompanyBalanceSheet : public testing::CompanyTest {
 protected:
  std::string Sheet(std::string_view filter, std::string_view day) const {
    return company.Answer(BalanceSheetRequest(filter, day));
  }

  CompanyFile company = NewCompany("2.0");
};

TEST_F(CompanyBalanceSheet, IsWrittenExactly) {
  company.Load("accounts.xml", AccountDocument({{"due", "AccountsReceivable", "Due", "", "", "75.10"}}));
  EXPECT_EQ(
      Sheet("AccountsReceivable", "2002-12-31"),
      Response(R"(<GeneralSummaryReportQueryRs statusCode="0" statusSeverity="Info" statusMessage="Status OK">
<ReportRet>
<ReportTitle>Balance Sheet</ReportTitle>
<ReportSubtitle>As of December 31, 2002</ReportSubtitle>
<ReportBasis>Accrual</ReportBasis>
<NumRows>7</NumRows>
<NumColumns>2</NumColumns>
<NumColTitleRows>1</NumColTitleRows>
<ColDesc colID="1" dataType="STRTYPE">
<ColTitle titleRow="1" />
<ColType>Blank</ColType>
</ColDesc>
<ColDesc colID="2" dataType="AMTTYPE">
<ColTitle titleRow="1" value="Dec 31, 02" />
<ColType>Amount</ColType>
</ColDesc>
<ReportData>
<TextRow rowNumber="1" value="ASSETS" />
<TextRow rowNumber="2" value="Current Assets" />
<TextRow rowNumber="3" value="Accounts Receivable" />
<DataRow rowNumber="4">
<RowData rowType="account" value="Due" />
<ColData colID="1" value="Due" />
<ColData colID="2" value="75.10" />
</DataRow>
<SubtotalRow rowNumber="5">
<ColData colID="1" value="Total Accounts Receivable" />
<ColData colID="2" value="75.10" />
</SubtotalRow>
<SubtotalRow rowNumber="6">
<ColData colID="1" value="Total Current Assets" />
<ColData colID="2" value="75.10" />
</SubtotalRow>
<TotalRow rowNumber="7">
<ColData colID="1" value="TOTAL ASSETS" />
<ColData colID="2" value="75.10" />
</TotalRow>
</ReportData>
</ReportRet>
</GeneralSummaryReportQueryRs>
)"));
}

TEST_F(CompanyBalanceSheet, SubtractsLaterPostingsFromTheStoredBalance) {
  company.Load("accounts.xml", AccountDocument({{"bank", "Bank", "Bank", "", "", "900.00"},
                                                {"owed", "AccountsPayable", "Owed", "", "", "55.00"},
                                                {"card", "CreditCard", "Card", "", "", "7.00"},
                                                {"rent", "Expense", "Rent"}}));
  company.Load("checks.xml",
               TransactionDocument(
                   "Check", TransactionRecord("Check", "1", "2002-06-30",
                                              Reference("AccountRef", "bank") + Element("Amount", "100.00") +
                                                  ExpenseLine("rent", "100.00"))));
  company.Load("bills.xml", TransactionDocument("Bill", TransactionRecord("Bill", "2", "2002-06-30",
                                                                          Reference("APAccountRef", "owed") +
                                                                              Element("AmountDue", "55.00") +
                                                                              ExpenseLine("rent", "55.00"))));
  company.Load("charges.xml", TransactionDocument("CreditCardCharge",
                                                  TransactionRecord("CreditCardCharge", "3", "2002-07-01",
                                                                    Reference("AccountRef", "card") +
                                                                        Element("Amount", "4.00") +
                                                                        ExpenseLine("rent", "4.00"))));
  struct Case {
    std::string_view filter, day, amount;
  };
  const std::vector<Case> cases = {
      {"Bank", "2002-06-29", "1000.00"},     {"Bank", "2002-06-30", "900.00"},
      {"Bank", "2010-01-01", "900.00"},      {"Bank", "", "900.00"},
      {"AccountsPayable", "2002-06-29", ""}, {"AccountsPayable", "2002-06-30", "55.00"},
      {"CreditCard", "2002-06-30", "3.00"},  {"CreditCard", "2002-07-01", "7.00"},
      {"CreditCard", "9999-12-31", "7.00"},
  };
  for (const auto& [filter, day, amount] : cases) {
    SCOPED_TRACE(std::string(filter) + " as of " + std::string(day));
    const Texts rows = RowsOf(Sheet(filter, day));
    if (amount.empty()) {
      EXPECT_EQ(rows, Texts{});
    } else {
      ASSERT_FALSE(rows.empty());
      EXPECT_EQ(rows.back().substr(rows.back().rfind(' ') + 1), amount);
    }
  }
}

TEST_F(CompanyBalanceSheet, OmitsAccountsWithoutABalance) {
  company.Load("accounts.xml", AccountDocument({{"a", "Bank", "Checking", "", "", "0.00"},
                                                {"b", "Bank", "Reserve", "a", "", "5.00"},
                                                {"c", "Bank", "Till", "", "", "0.00"},
                                                {"d", "Bank", "Savings"}}));
  EXPECT_EQ(
      RowsOf(Sheet("Bank", "2002-12-31")),
      (Texts{"TextRow | ASSETS", "TextRow | Current Assets", "TextRow | Checking/Savings",
             "TextRow | Checking", "DataRow Checking:Reserve | Reserve | 5.00",
             "SubtotalRow Checking | Total Checking | 5.00", "SubtotalRow | Total Checking/Savings | 5.00",
             "SubtotalRow | Total Current Assets | 5.00", "TotalRow | TOTAL ASSETS | 5.00"}));
}

TEST_F(CompanyBalanceSheet, HasTheHeadingsOfItsType) {
  company.Load("accounts.xml", AccountDocument({{"1", "OtherCurrentLiability", "Tax", "", "", "1.00"},
                                                {"2", "LongTermLiability", "Loan", "", "", "2.00"},
                                                {"3", "Equity", "Capital", "", "", "-3.00"},
                                                {"4", "FixedAsset", "Trucks", "", "", "4.00"},
                                                {"5", "OtherAsset", "Deposits", "", "", "5.00"}}));
  struct Case {
    std::string_view filter;
    Texts rows;
  };
  const std::vector<Case> cases = {
      {"OtherCurrentLiability",
       {"TextRow | LIABILITIES & EQUITY", "TextRow | Liabilities", "TextRow | Current Liabilities",
        "TextRow | Other Current Liabilities", "DataRow Tax | Tax | 1.00",
        "SubtotalRow | Total Other Current Liabilities | 1.00",
        "SubtotalRow | Total Current Liabilities | 1.00", "SubtotalRow | Total Liabilities | 1.00",
        "TotalRow | TOTAL LIABILITIES & EQUITY | 1.00"}},
      {"LongTermLiability",
       {"TextRow | LIABILITIES & EQUITY", "TextRow | Liabilities", "TextRow | Long Term Liabilities",
        "DataRow Loan | Loan | 2.00", "SubtotalRow | Total Long Term Liabilities | 2.00",
        "SubtotalRow | Total Liabilities | 2.00", "TotalRow | TOTAL LIABILITIES & EQUITY | 2.00"}},
      {"Equity",
       {"TextRow | LIABILITIES & EQUITY", "TextRow | Equity", "DataRow Capital | Capital | -3.00",
        "SubtotalRow | Total Equity | -3.00", "TotalRow | TOTAL LIABILITIES & EQUITY | -3.00"}},
      {"FixedAsset",
       {"TextRow | ASSETS", "TextRow | Fixed Assets", "DataRow Trucks | Trucks | 4.00",
        "SubtotalRow | Total Fixed Assets | 4.00", "TotalRow | TOTAL ASSETS | 4.00"}},
      {"OtherAsset",
       {"TextRow | ASSETS", "TextRow | Other Assets", "DataRow Deposits | Deposits | 5.00",
        "SubtotalRow | Total Other Assets | 5.00", "TotalRow | TOTAL ASSETS | 5.00"}},
      {"Bank", {}},
      {"Income", {}},
  };
  for (const auto& [filter, rows] : cases) {
    SCOPED_TRACE(filter);
    EXPECT_EQ(RowsOf(Sheet(filter, "2002-12-31")), rows);
  }
}

TEST_F(CompanyBalanceSheet, ValuesInventoryAtCost) {
  company.Load("accounts.xml", AccountDocument({{"stock", "OtherCurrentAsset", "Stock", "", "", "100.00"},
                                                {"sales", "Income", "Sales"},
                                                {"cost", "CostOfGoodsSold", "Cost"}}));
  company.Load(
      "items.xml",
      Response(Element("ItemQueryRs",
                       Element("ItemInventoryRet",
                               Element("ListID", "pot") + Reference("IncomeAccountRef", "sales") +
                                   Reference("COGSAccountRef", "cost") +
                                   Reference("AssetAccountRef", "stock") + Element("AverageCost", "2.50")))));
  company.Load(
      "invoices.xml",
      TransactionDocument("Invoice", TransactionRecord("Invoice", "1", "2002-05-02",
                                                       ItemLine("InvoiceLineRet", "pot", "40.00", "4"))));
  company.Load("bills.xml",
               TransactionDocument("Bill", TransactionRecord("Bill", "2", "2002-05-03",
                                                             ItemLine("ItemLineRet", "pot", "30.00", "12"))));
  EXPECT_EQ(RowsOf(Sheet("OtherCurrentAsset", "2002-05-01")).at(3), "DataRow Stock | Stock | 80.00");
  EXPECT_EQ(RowsOf(Sheet("OtherCurrentAsset", "2002-05-02")).at(3), "DataRow Stock | Stock | 70.00");
  EXPECT_EQ(RowsOf(Sheet("OtherCurrentAsset", "2002-05-03")).at(3), "DataRow Stock | Stock | 100.00");
}

TEST_F(CompanyBalanceSheet, HasOneColumnForAnyPeriod) {
  company.Load("accounts.xml", AccountDocument({{"bank", "Bank", "Bank", "", "", "1.00"}}));
  const std::string request = testing::Request(
      "2.0",
      "<GeneralSummaryReportQueryRq><GeneralSummaryReportType>BalanceSheetStandard"
      "</GeneralSummaryReportType><ReportPeriod><FromReportDate>2002-01-01</FromReportDate><ToReportDate>"
      "2002-12-31</ToReportDate></ReportPeriod><ReportAccountFilter><AccountTypeFilter>Bank"
      "</AccountTypeFilter></ReportAccountFilter><SummarizeColumnsBy>Month</SummarizeColumnsBy>"
      "</GeneralSummaryReportQueryRq>");
  EXPECT_EQ(company.Answer(request), Sheet("Bank", "2002-12-31"));
  EXPECT_EQ(ColumnTitlesOf(company.Answer(request)), Texts{"Dec 31, 02"});
}

}  // namespace
}  // namespace krnqb::company
