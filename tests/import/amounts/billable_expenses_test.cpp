#include <gtest/gtest.h>

#include <string>

#include "fakes/import_surroundings.h"
#include "import/amounts/expense_transactions.h"
#include "qbxml/request_catalogue.h"

namespace krnqb {
namespace {

using fakes::AccountRef;
using fakes::Amount;
using fakes::CustomerRef;
using fakes::Element;
using fakes::ExpenseLine;
using fakes::ItemLine;
using fakes::ItemRef;
using fakes::OneAccountItem;
using fakes::TwoAccountItem;

class RecordedBillableExpenses : public testing::Test {
 protected:
  void Book(const std::string& lines) {
    surroundings.quickBooks->answers["10"] = fakes::RecordAnswer("BillQueryRs", Element("BillRet", lines));
    ReadExpenseTransactions(
        surroundings.context,
        {.kind = 10, .request = BuildRequest(10, "2002-01-01", "2002-01-31"), .month = 1, .range = {}});
  }
  std::string Recorded(std::string_view key) {
    const BillableExpense* expense = surroundings.state.billableExpenses->Find(key);
    return expense == nullptr ? "(none)" : std::string(expense->account);
  }
  std::size_t Count() const { return surroundings.state.billableExpenses->Count(); }

  fakes::ImportSurroundings surroundings;
};

TEST_F(RecordedBillableExpenses, ContainTheAccountByCustomerAndAmountText) {
  Book(ExpenseLine(AccountRef("E-1") + Amount("75.00") + CustomerRef("K-1")));
  EXPECT_EQ(Recorded("K-1,75.00"), "E-1");
  EXPECT_EQ(Count(), 1U);
}

TEST_F(RecordedBillableExpenses, UseTheFirstIdInAllReferences) {
  Book(ExpenseLine(Element("AccountRef", "") + AccountRef("E-1") + Element("CustomerRef", "") +
                   CustomerRef("K-1") + Amount("75.00")));
  EXPECT_EQ(Recorded("K-1,75.00"), "E-1");
  surroundings.SetItems(fakes::OneAccountItem("IT-1", "E-2"));
  Book(
      fakes::ItemLine(Element("ItemRef", "") + fakes::ItemRef("IT-1") + CustomerRef("K-2") + Amount("5.00")));
  EXPECT_EQ(Recorded("K-2,5.00"), "E-2");
}

TEST_F(RecordedBillableExpenses, ContainTheLinesAccountNotItsTopLevelAccount) {
  Book(ExpenseLine(AccountRef("E-3") + Amount("75.00") + CustomerRef("K-1")));
  EXPECT_EQ(Recorded("K-1,75.00"), "E-3");
}

TEST_F(RecordedBillableExpenses, IncludeALineOfAnyAmount) {
  Book(ExpenseLine(AccountRef("E-1") + Amount("0.00") + CustomerRef("K-1")) +
       ExpenseLine(AccountRef("E-1") + Amount("-5") + CustomerRef("K-1")) +
       ExpenseLine(AccountRef("E-2") + Amount("no number") + CustomerRef("K-1")) +
       ExpenseLine(AccountRef("E-2") + "<Amount/>" + CustomerRef("K-1")));
  EXPECT_EQ(Recorded("K-1,0.00"), "E-1");
  EXPECT_EQ(Recorded("K-1,-5"), "E-1");
  EXPECT_EQ(Recorded("K-1,no number"), "E-2");
  EXPECT_EQ(Recorded("K-1,"), "E-2");
  EXPECT_EQ(surroundings.SumOfAll(), -5);
}

TEST_F(RecordedBillableExpenses, IncludeAnUnlistedAccount) {
  Book(ExpenseLine(AccountRef("X-9") + Amount("75.00") + CustomerRef("K-1")));
  EXPECT_EQ(Recorded("K-1,75.00"), "X-9");
}

TEST_F(RecordedBillableExpenses, ExcludeALineWithoutCustomer) {
  Book(ExpenseLine(AccountRef("E-1") + Amount("75.00")));
  EXPECT_EQ(Count(), 0U);
}

TEST_F(RecordedBillableExpenses, ExcludeALineWithoutCustomerIdOrAmount) {
  Book(ExpenseLine(AccountRef("E-1") + Amount("75.00") + "<CustomerRef/>") +
       ExpenseLine(AccountRef("E-1") + CustomerRef("K-1")));
  EXPECT_EQ(Count(), 0U);
  EXPECT_EQ(surroundings.Expense("Rent", 1), 75) << "the amount is still booked";
}

TEST_F(RecordedBillableExpenses, IncludeALineWhoseCustomerIdIsEmpty) {
  Book(ExpenseLine(AccountRef("E-1") + Amount("75.00") + CustomerRef("")));
  EXPECT_EQ(Recorded(",75.00"), "E-1");
}

TEST_F(RecordedBillableExpenses, ExcludeALineWithoutAccount) {
  surroundings.SetItems(fakes::Item("ItemGroupRet", "IT-1", ""));
  Book(ExpenseLine(Amount("75.00") + CustomerRef("K-1")) +
       ExpenseLine(AccountRef("") + Amount("76.00") + CustomerRef("K-1")) +
       ItemLine(ItemRef("IT-1") + Amount("77.00") + CustomerRef("K-1")) +
       ItemLine(Amount("78.00") + CustomerRef("K-1")));
  EXPECT_EQ(Count(), 0U);
}

TEST_F(RecordedBillableExpenses, UseTheIncomeSideOfAnItem) {
  surroundings.SetItems(TwoAccountItem("IT-1", "I-1", "E-1"));
  Book(ItemLine(ItemRef("IT-1") + Amount("75.00") + CustomerRef("K-1")));
  EXPECT_EQ(Recorded("K-1,75.00"), "I-1");
  EXPECT_EQ(surroundings.Expense("Rent", 1), 75) << "the line is booked on the expense side";
}

TEST_F(RecordedBillableExpenses, PreferTheLinesAccountToItsItem) {
  surroundings.SetItems(OneAccountItem("IT-1", "E-2"));
  Book(ItemLine(AccountRef("E-1") + ItemRef("IT-1") + Amount("75.00") + CustomerRef("K-1")) +
       ExpenseLine(ItemRef("IT-1") + Amount("76.00") + CustomerRef("K-1")));
  EXPECT_EQ(Recorded("K-1,75.00"), "E-1");
  EXPECT_EQ(Recorded("K-1,76.00"), "E-2");
}

TEST_F(RecordedBillableExpenses, CanContainACostOfGoodsMarker) {
  surroundings.SetItems(fakes::InventoryItem("IT-1", "I-1", "C-1", "2.50"));
  Book(ItemLine(ItemRef("IT-1") + Amount("75.00") + CustomerRef("K-1")));
  EXPECT_EQ(Recorded("K-1,75.00"), "<COGS  cogsid=\"C-1\" workid=\"I-1\" averagecost=\"2.50\"/>");
  EXPECT_EQ(surroundings.SumOfAll(), 0);
}

TEST_F(RecordedBillableExpenses, KeepAMarkersTextUnchanged) {
  surroundings.SetItems(fakes::InventoryItem("IT-1", "I-1", "C&amp;1", "2&quot;") +
                        OneAccountItem("IT-2", "&lt;COGS x"));
  Book(ItemLine(ItemRef("IT-1") + Amount("75.00") + CustomerRef("K-1")) +
       ItemLine(ItemRef("IT-2") + Amount("76.00") + CustomerRef("K-1")));
  EXPECT_EQ(Recorded("K-1,75.00"), "<COGS  cogsid=\"C&1\" workid=\"I-1\" averagecost=\"2\"\"/>");
  EXPECT_EQ(Recorded("K-1,76.00"), "<COGS x");
}

TEST_F(RecordedBillableExpenses, KeepTheFirstAccountOfAKey) {
  Book(ExpenseLine(AccountRef("E-1") + Amount("75.00") + CustomerRef("K-1")) +
       ExpenseLine(AccountRef("E-2") + Amount("75.00") + CustomerRef("K-1")) +
       ExpenseLine(AccountRef("E-2") + Amount("75.00") + CustomerRef("k-1")));
  EXPECT_EQ(Recorded("K-1,75.00"), "E-1");
  EXPECT_EQ(Count(), 1U);
  EXPECT_EQ(surroundings.Expense("Utilities", 1), 150) << "both are booked";
}

TEST_F(RecordedBillableExpenses, DistinguishAmountsByTheirTexts) {
  Book(ExpenseLine(AccountRef("E-1") + Amount("75.00") + CustomerRef("K-1")) +
       ExpenseLine(AccountRef("E-2") + Amount("75.0") + CustomerRef("K-1")) +
       ExpenseLine(AccountRef("E-3") + Amount(" 75.00") + CustomerRef("K-1")));
  EXPECT_EQ(Recorded("K-1,75.00"), "E-1");
  EXPECT_EQ(Recorded("K-1,75.0"), "E-2");
  EXPECT_EQ(Recorded("K-1, 75.00"), "E-3");
}

TEST_F(RecordedBillableExpenses, ReuseNothingFromThePreviousLine) {
  surroundings.SetItems(OneAccountItem("IT-1", "E-2"));
  Book(ExpenseLine(AccountRef("E-1") + Amount("75.00") + CustomerRef("K-1")) +
       ExpenseLine(Amount("76.00") + CustomerRef("K-2")) +
       ItemLine(ItemRef("IT-1") + Amount("77.00") + CustomerRef("K-3")) +
       ItemLine(ItemRef("IT-9") + Amount("78.00") + CustomerRef("K-4")));
  EXPECT_EQ(Count(), 2U);
  EXPECT_EQ(Recorded("K-3,77.00"), "E-2");
}

TEST_F(RecordedBillableExpenses, ExcludeALineInsideAnItemGroup) {
  surroundings.SetItems(OneAccountItem("IT-1", "E-1"));
  Book(Element("ItemGroupLineRet", ItemLine(ItemRef("IT-1") + Amount("75.00") + CustomerRef("K-1"))));
  EXPECT_EQ(Count(), 0U);
}

TEST_F(RecordedBillableExpenses, AreNotRequiredForBooking) {
  surroundings.state.billableExpenses.reset();
  Book(ExpenseLine(AccountRef("E-1") + Amount("75.00") + CustomerRef("K-1")) +
       ExpenseLine(AccountRef("E-1") + Amount("5")));
  EXPECT_FALSE(surroundings.state.billableExpenses);
  EXPECT_EQ(surroundings.Expense("Rent", 1), 80);
}

}  // namespace
}  // namespace krnqb
