#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "fakes/import_surroundings.h"
#include "import/amounts/expense_transactions.h"
#include "import/amounts/sales_transactions.h"
#include "qbxml/request_catalogue.h"

namespace krnqb {
namespace {

using fakes::AccountRef;
using fakes::Amount;
using fakes::CustomerRef;
using fakes::Element;
using fakes::ExpenseLine;
using fakes::InvoiceLine;
using fakes::ItemRef;

class BilledExpenseOffset : public testing::Test {
 protected:
  BilledExpenseOffset() { surroundings.state.billableExpenses->Add({.account = "E-3"}, "K-1,75.00"); }

  /// Offsets a line of month 4.
  bool Offset(const TransactionLine& line) {
    const TransactionQuery query{.kind = 20, .request = {}, .month = 4, .range = {}};
    LineBooking booking(surroundings.context, query, Operation::OffsetBilledExpense);
    return OffsetBilledExpense(booking, line);
  }
  static TransactionLine Line(TransactionLine::Field amount, TransactionLine::Field parentCustomer,
                              TransactionLine::Field grandparentCustomer = std::nullopt) {
    TransactionLine line;
    line.element = "InvoiceLineRet";
    line.amount = amount;
    line.parentCustomerId = parentCustomer;
    line.grandparentCustomerId = grandparentCustomer;
    return line;
  }
  double Utilities() const { return surroundings.Expense("Utilities", 4); }
  double SumOfAll() const { return surroundings.SumOfAll(); }

  fakes::ImportSurroundings surroundings;
};

TEST_F(BilledExpenseOffset, SubtractsFromTheTopLevelAccountInTheMonthOfTheSale) {
  EXPECT_TRUE(Offset(Line("75.00", "K-1")));
  EXPECT_EQ(Utilities(), -75);
  EXPECT_EQ(SumOfAll(), -75);
}

TEST_F(BilledExpenseOffset, FindsTheCustomerTwoLevelsUpIfTheParentHasNone) {
  EXPECT_TRUE(Offset(Line("75.00", std::nullopt, "K-1")));
  EXPECT_EQ(Utilities(), -75);
}

TEST_F(BilledExpenseOffset, PrefersTheParentsCustomer) {
  EXPECT_FALSE(Offset(Line("75.00", "K-2", "K-1")));
  EXPECT_FALSE(Offset(Line("75.00", "", "K-1"))) << "an empty id is not missing";
  EXPECT_EQ(SumOfAll(), 0);
}

TEST_F(BilledExpenseOffset, RequiresTheSameAmountText) {
  for (const char* amount : {"75.01", "75.0", "75", " 75.00", "075.00", "-75.00", ""}) {
    EXPECT_FALSE(Offset(Line(amount, "K-1"))) << amount;
  }
  EXPECT_EQ(SumOfAll(), 0);
}

TEST_F(BilledExpenseOffset, RequiresTheSameCustomer) {
  EXPECT_FALSE(Offset(Line("75.00", "K-2")));
  EXPECT_FALSE(Offset(Line("75.00", std::nullopt)));
  EXPECT_EQ(SumOfAll(), 0);
}

TEST_F(BilledExpenseOffset, RequiresAnAmount) {
  EXPECT_FALSE(Offset(Line(std::nullopt, "K-1")));
  EXPECT_EQ(SumOfAll(), 0);
}

TEST_F(BilledExpenseOffset, ComparesTheCustomerCaseInsensitively) {
  EXPECT_TRUE(Offset(Line("75.00", "k-1")));
  EXPECT_EQ(Utilities(), -75);
}

TEST_F(BilledExpenseOffset, SubtractsForEveryMatchingLine) {
  EXPECT_TRUE(Offset(Line("75.00", "K-1")));
  EXPECT_TRUE(Offset(Line("75.00", "K-1")));
  EXPECT_EQ(Utilities(), -150);
  EXPECT_EQ(surroundings.state.billableExpenses->Count(), 1U);
}

TEST_F(BilledExpenseOffset, RequiresAnExpenseAccount) {
  surroundings.state.billableExpenses->Add({.account = "I-1"}, "K-1,76.00");
  surroundings.state.billableExpenses->Add({.account = "X-9"}, "K-1,77.00");
  surroundings.state.billableExpenses->Add({.account = ""}, "K-1,78.00");
  surroundings.state.billableExpenses->Add({.account = CostOfGoodsMarker({"E-1", "E-1", "1"})}, "K-1,79.00");
  for (const char* amount : {"76.00", "77.00", "78.00", "79.00"}) {
    EXPECT_FALSE(Offset(Line(amount, "K-1"))) << amount;
  }
  EXPECT_EQ(SumOfAll(), 0);
}

TEST_F(BilledExpenseOffset, ReportsAMissingSubtotal) {
  surroundings.state.expenseSubtotals = fakes::ImportSurroundings::Zeros({"Rent"});
  Offset(Line("75.00", "K-1"));
  surroundings.state.expenseSubtotals.reset();
  Offset(Line("75.00", "K-1"));
  EXPECT_EQ(SumOfAll(), 0);
  EXPECT_EQ(surroundings.SkipReasons(), std::vector(2, SkipReason::NoSubtotal));
}

TEST_F(BilledExpenseOffset, DoesNothingBeforeAnyExpensePass) {
  surroundings.state.billableExpenses.reset();
  EXPECT_FALSE(Offset(Line("75.00", "K-1")));
  EXPECT_EQ(SumOfAll(), 0);
}

TEST_F(BilledExpenseOffset, KeepsASubtotalIfTheDifferenceIsOutOfRange) {
  constexpr double lowest = std::numeric_limits<double>::lowest();
  surroundings.state.billableExpenses->Add({.account = "E-1"}, "K-1,1.7976931348623157E+308");
  surroundings.state.expenseSubtotals->At("Rent").SubTotal(4, lowest);
  Offset(Line("1.7976931348623157E+308", "K-1"));
  EXPECT_EQ(surroundings.Expense("Rent", 4), lowest);
  EXPECT_EQ(surroundings.SkipReasons(), std::vector(1, SkipReason::SubtotalOutOfRange));
}

// From responses to subtotals.

class BillingAnExpense : public testing::Test {
 protected:
  BillingAnExpense() { surroundings.SetItems(fakes::Item("ItemOtherChargeRet", "IT-1", "")); }

  void Spend(std::int16_t month, const std::string& lines) {
    surroundings.quickBooks->answers["10"] = fakes::RecordAnswer("BillQueryRs", Element("BillRet", lines));
    ReadExpenseTransactions(surroundings.context,
                            {.kind = 10, .request = BuildRequest(10, {}, {}), .month = month, .range = {}});
  }
  void Bill(std::int16_t month, const std::string& invoice) {
    surroundings.quickBooks->answers["20"] =
        fakes::RecordAnswer("InvoiceQueryRs", Element("InvoiceRet", invoice));
    ReadSalesTransactions(surroundings.context,
                          {.kind = 20, .request = BuildRequest(20, {}, {}), .month = month, .range = {}});
  }

  fakes::ImportSurroundings surroundings;
};

TEST_F(BillingAnExpense, SubtractsItInTheMonthOfTheInvoice) {
  Spend(1, ExpenseLine(AccountRef("E-1") + Amount("75.00") + CustomerRef("K-1")));
  Bill(3, CustomerRef("K-1") + InvoiceLine(ItemRef("IT-1") + Amount("75.01")));
  EXPECT_EQ(surroundings.Expense("Rent", 3), 0);
  Bill(3, CustomerRef("K-1") + InvoiceLine(ItemRef("IT-1") + Amount("75.00")));
  EXPECT_EQ(surroundings.Expense("Rent", 1), 75);
  EXPECT_EQ(surroundings.Expense("Rent", 3), -75);
  EXPECT_EQ(surroundings.SumOfAll(), 0);
}

TEST_F(BillingAnExpense, FindsTheCustomerOfALineInsideAGroupOnTheInvoice) {
  Spend(1, ExpenseLine(AccountRef("E-1") + Amount("75.00") + CustomerRef("K-1")));
  Bill(2, CustomerRef("K-1") +
              Element("InvoiceLineGroupRet",
                      fakes::ItemGroupRef("G-1") + InvoiceLine(ItemRef("IT-1") + Amount("75.00"))));
  EXPECT_EQ(surroundings.Expense("Rent", 2), -75);
}

TEST_F(BillingAnExpense, OffsetsTheFirstOfTwoAccountsWithTheSameCustomerAndAmount) {
  Spend(1, ExpenseLine(AccountRef("E-1") + Amount("75.00") + CustomerRef("K-1")) +
               ExpenseLine(AccountRef("E-2") + Amount("75.00") + CustomerRef("K-1")));
  Bill(2, CustomerRef("K-1") + InvoiceLine(ItemRef("IT-1") + Amount("75.00")) +
              InvoiceLine(ItemRef("IT-1") + Amount("75.00")));
  EXPECT_EQ(surroundings.Expense("Rent", 2), -150);
  EXPECT_EQ(surroundings.Expense("Utilities", 1), 75);
  EXPECT_EQ(surroundings.Expense("Utilities", 2), 0);
}

TEST_F(BillingAnExpense, OfAnInventoryItemOffsetsNothing) {
  surroundings.SetItems(fakes::Item("ItemOtherChargeRet", "IT-1", "") +
                        fakes::InventoryItem("IT-2", "E-1", "C-1", "2.5"));
  Spend(1, fakes::ItemLine(ItemRef("IT-2") + Amount("75.00") + CustomerRef("K-1")));
  Bill(2, CustomerRef("K-1") + InvoiceLine(ItemRef("IT-1") + Amount("75.00")));
  EXPECT_EQ(surroundings.state.billableExpenses->Count(), 1U);
  EXPECT_EQ(surroundings.SumOfAll(), 0);
}

TEST_F(BillingAnExpense, OfALineWhoseItemHasAnAccountIsASaleInstead) {
  surroundings.SetItems(fakes::OneAccountItem("IT-1", "I-1"));
  Spend(1, ExpenseLine(AccountRef("E-1") + Amount("75.00") + CustomerRef("K-1")));
  Bill(2, CustomerRef("K-1") + InvoiceLine(ItemRef("IT-1") + Amount("75.00")));
  EXPECT_EQ(surroundings.Expense("Rent", 2), 0);
  EXPECT_EQ(surroundings.Income("Plants", 2), 75);
}

TEST_F(BillingAnExpense, WithTheLinesOwnCustomerOffsetsNothing) {
  Spend(1, ExpenseLine(AccountRef("E-1") + Amount("75.00") + CustomerRef("K-1")));
  Bill(2, InvoiceLine(ItemRef("IT-1") + Amount("75.00") + CustomerRef("K-1")));
  EXPECT_EQ(surroundings.Expense("Rent", 2), 0);
}

}  // namespace
}  // namespace krnqb
