#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/findings.h"
#include "fakes/import_surroundings.h"
#include "import/amounts/balances.h"
#include "import/amounts/report_reading.h"

// What is warned of while amounts are read, and what is not.

namespace krnqb {
namespace {

using fakes::AccountRef;
using fakes::Amount;
using fakes::CustomerRef;
using fakes::Element;
using fakes::ExpenseLine;
using fakes::InvoiceLine;
using fakes::ItemRef;
using fakes::Quantity;
using fakes::RecordAnswer;
using Findings = std::vector<Finding>;

std::string BalanceAccount(const std::string& id, const std::string& name, const std::string& balance,
                           const std::string& parent = {}) {
  return Element("AccountRet", Element("ListID", id) + Element("Name", name) +
                                   (parent.empty() ? "" : fakes::Reference("ParentRef", parent)) +
                                   Element("Sublevel", parent.empty() ? "0" : "1") +
                                   Element("AccountType", "Expense") + Element("Balance", balance));
}

class AmountWarnings : public testing::Test {
 protected:
  AmountWarnings() {
    surroundings.state.options.period = {
        .krnStartingMonth = 1, .krnStartingYear = 2003, .startingMonth = 1, .startingYear = 2002};
  }

  void SetExpenses(const std::string& records) {
    surroundings.state.expenseAccounts = fakes::ImportSurroundings::List("4", {records});
  }
  void Bill(const std::string& lines) {
    surroundings.quickBooks->answers["10 2002-01-01"] =
        RecordAnswer("BillQueryRs", Element("BillRet", lines));
  }
  void Invoice(const std::string& lines) {
    surroundings.quickBooks->answers["20 2002-01-01"] =
        RecordAnswer("InvoiceQueryRs", Element("InvoiceRet", lines));
  }
  Findings Import(WarningCode code) {
    ImportExpenseBalances(surroundings.context, {.year = 2002, .month = 1});
    ImportIncomeBalances(surroundings.context, {.year = 2002, .month = 1});
    return fakes::FindingsOf(surroundings.observer, code);
  }
  Findings Report(WarningCode code, const std::string& rows, const std::string& toDate = "2002-12-31") {
    const Place place{.request = 310, .fromDate = "2002-01-01", .toDate = toDate};
    ParseProfitAndLossReport(XmlElement::Parse(fakes::ReportAnswer(rows)),
                             surroundings.state.expenseSubtotals, surroundings.observer, place);
    return fakes::FindingsOf(surroundings.observer, code);
  }

  fakes::ImportSurroundings surroundings;
};

TEST_F(AmountWarnings, NameASpreadBalanceItsMonthsAndTheSubAccountsNotInIt) {
  SetExpenses(BalanceAccount("E-1", "Rent", "0") + BalanceAccount("E-2", "Utilities", "2214.80") +
              BalanceAccount("E-3", "Gas", "26000", "E-2") + BalanceAccount("E-4", "Water", "200", "E-2"));
  Bill(ExpenseLine(AccountRef("E-1") + Amount("10")));
  EXPECT_EQ(Import(WarningCode::BalanceSpread), (Findings{{.code = WarningCode::BalanceSpread,
                                                           .name = "Utilities",
                                                           .amount = 2214.80,
                                                           .otherAmount = 26200,
                                                           .months = {1}}}));
}

TEST_F(AmountWarnings, NameOnlyTheSubAccountsOfTheSpreadAccountItself) {
  SetExpenses(BalanceAccount("E-1", "Rent", "1200.00") + BalanceAccount("E-2", "Utilities", "0") +
              BalanceAccount("E-3", "Gas", "26000", "E-2"));
  Bill(ExpenseLine(AccountRef("E-3") + Amount("10")));
  const Findings spread = Import(WarningCode::BalanceSpread);
  ASSERT_EQ(spread.size(), 1U);
  EXPECT_EQ(spread[0].name, "Rent");
  EXPECT_EQ(spread[0].otherAmount, 0);
}

TEST_F(AmountWarnings, DoNotNameABalanceThatIsNotSpread) {
  SetExpenses(BalanceAccount("E-1", "Rent", "0") + BalanceAccount("E-2", "Utilities", "2214.80"));
  Bill(ExpenseLine(AccountRef("E-2") + Amount("10")));
  EXPECT_EQ(Import(WarningCode::BalanceSpread), Findings());
}

TEST_F(AmountWarnings, NameABalanceThatWasReadInPart) {
  SetExpenses(BalanceAccount("E-1", "Rent", "1,234.56") + BalanceAccount("E-2", "Utilities", "(5.00)"));
  EXPECT_EQ(Import(WarningCode::TextCut),
            (Findings{{.code = WarningCode::TextCut, .name = "Rent", .text = "1,234.56", .amount = 1},
                      {.code = WarningCode::TextCut, .name = "Utilities", .text = "(5.00)", .amount = 0}}));
}

TEST_F(AmountWarnings, DoNotNameABalanceThatIsReadWholeOrNotUsed) {
  SetExpenses(BalanceAccount("E-1", "Rent", " -1234.56 ") + BalanceAccount("E-2", "Utilities", "1,000"));
  Bill(ExpenseLine(AccountRef("E-2") + Amount("1,000.00")));
  EXPECT_EQ(Import(WarningCode::TextCut), Findings());
}

TEST_F(AmountWarnings, NameAnAverageCostThatWasReadInPart) {
  surroundings.SetItems(Element(
      "ItemInventoryRet", Element("ListID", "IT-1") + Element("FullName", "Tulip bulbs") +
                              fakes::Reference("IncomeAccountRef", "I-1") +
                              fakes::Reference("COGSAccountRef", "C-1") + Element("AverageCost", "1,2")));
  Invoice(InvoiceLine(ItemRef("IT-1") + Quantity("2") + Amount("10")) +
          InvoiceLine(ItemRef("IT-1") + Quantity("3") + Amount("15")));
  EXPECT_EQ(Import(WarningCode::TextCut),
            (Findings{{.code = WarningCode::TextCut, .name = "Tulip bulbs", .text = "1,2", .amount = 1}}));
}

TEST_F(AmountWarnings, NameAQuantityThatIsNoNumber) {
  surroundings.SetItems(fakes::InventoryItem("IT-1", "I-1", "C-1", "2.5"));
  const std::string item = Element("ItemRef", Element("ListID", "IT-1") + Element("FullName", "Bulbs"));
  Invoice(InvoiceLine(item + Quantity("two") + Amount("10")) +
          InvoiceLine(item + Quantity("2") + Amount("10")) + InvoiceLine(item + Amount("10")));
  EXPECT_EQ(Import(WarningCode::QuantityAsOne),
            (Findings{{.code = WarningCode::QuantityAsOne, .name = "Bulbs", .text = "two"}}));
}

TEST_F(AmountWarnings, NameACustomerWhoWasBilledMoreThanWasBooked) {
  const std::string customer =
      Element("CustomerRef", Element("ListID", "K-1") + Element("FullName", "Ms Wood"));
  Bill(ExpenseLine(AccountRef("E-1") + Amount("75.00") + customer));
  surroundings.SetItems("");
  const std::string line = InvoiceLine(ItemRef("IT-9") + Amount("75.00"));
  Invoice(customer + line + line + line);
  EXPECT_EQ(Import(WarningCode::BilledAgain),
            (Findings{{.code = WarningCode::BilledAgain, .name = "Ms Wood", .amount = 150}}));
}

TEST_F(AmountWarnings, DoNotNameACustomerWhoWasBilledAsOftenAsWasBooked) {
  const std::string line = ExpenseLine(AccountRef("E-1") + Amount("75.00") + CustomerRef("K-1"));
  Bill(line + line);
  surroundings.SetItems("");
  const std::string sale = InvoiceLine(ItemRef("IT-9") + Amount("75.00"));
  Invoice(CustomerRef("K-1") + sale + sale);
  EXPECT_EQ(surroundings.state.billableExpenses->Count(), 0U);
  EXPECT_EQ(Import(WarningCode::BilledAgain), Findings());
  EXPECT_EQ(surroundings.Expense("Rent", 1), 0) << "both were taken back";
}

TEST_F(AmountWarnings, NameAReportAmountThatWasReadInPart) {
  EXPECT_EQ(Report(WarningCode::TextCut, fakes::ReportRow("Rent", {"1,234.56", "7", ""})),
            (Findings{{.code = WarningCode::TextCut, .name = "Rent", .text = "1,234.56", .amount = 1}}));
}

TEST_F(AmountWarnings, DoNotNameTheAmountsOfAnotherAccountsReportRow) {
  EXPECT_EQ(Report(WarningCode::TextCut, fakes::ReportRow("Unknown", {"1,234.56"})), Findings());
}

TEST_F(AmountWarnings, NameAReportOfOneMonthWithATotalColumn) {
  const std::string rows =
      fakes::ReportRow("Rent", {"100", "100"}) + fakes::ReportRow("Utilities", {"5", "5"});
  EXPECT_EQ(
      Report(WarningCode::TotalColumn, rows, "2002-01-31"),
      (Findings{{.code = WarningCode::TotalColumn, .name = "expenses", .text = "2002-01", .amount = 105}}));
}

TEST_F(AmountWarnings, NameATotalColumnWhoseAmountsCancelOut) {
  const std::string rows =
      fakes::ReportRow("Rent", {"100", "100"}) + fakes::ReportRow("Utilities", {"-100", "-100"});
  EXPECT_EQ(Report(WarningCode::TotalColumn, rows, "2002-01-31").size(), 1U);
}

TEST_F(AmountWarnings, DoNotNameOneColumnOrAReportOfSeveralMonths) {
  EXPECT_EQ(Report(WarningCode::TotalColumn, fakes::ReportRow("Rent", {"100"}), "2002-01-31"), Findings());
  EXPECT_EQ(Report(WarningCode::TotalColumn, fakes::ReportRow("Rent", {"100", "5"}), "2002-02-28"),
            Findings());
}

}  // namespace
}  // namespace krnqb
