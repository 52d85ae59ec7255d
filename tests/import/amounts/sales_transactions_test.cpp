#include "import/amounts/sales_transactions.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "fakes/import_surroundings.h"
#include "qbxml/request_catalogue.h"

namespace krnqb {
namespace {

using fakes::Amount;
using fakes::Element;
using fakes::InvoiceLine;
using fakes::Item;
using fakes::ItemGroupRef;
using fakes::ItemRef;
using fakes::OneAccountItem;
using fakes::Quantity;
using fakes::RecordAnswer;
using fakes::SalesReceiptLine;
using fakes::TwoAccountItem;

class SalesTransactions : public testing::Test {
 protected:
  SalesTransactions() {
    surroundings.SetItems(OneAccountItem("IT-1", "I-3") + TwoAccountItem("IT-2", "I-2", "E-1") +
                          OneAccountItem("IT-3", "E-3") + fakes::InventoryItem("IT-4", "I-1", "C-3", "2.5") +
                          OneAccountItem("IT-5", "X-9") + Item("ItemGroupRet", "G-1", "") +
                          OneAccountItem("G-2", "I-2"));
  }

  /// Books the content of one invoice.
  void Book(const std::string& invoice) {
    surroundings.quickBooks->answers["20"] = RecordAnswer("InvoiceQueryRs", Element("InvoiceRet", invoice));
    Read(20);
  }
  void Read(std::int32_t kind, std::int16_t month = 5) {
    const DateRange range{"2002-05-01", "2002-05-31"};
    ReadSalesTransactions(surroundings.context, {.kind = kind,
                                                 .request = BuildRequest(kind, range.fromDate, range.toDate),
                                                 .month = month,
                                                 .range = range});
  }

  double Plants() const { return surroundings.Income("Plants", 5); }
  double Tools() const { return surroundings.Income("Tools", 5); }
  double Seeds() const { return surroundings.Cost("Seeds", 5); }
  double SumOfAll() const { return surroundings.SumOfAll(); }

  fakes::ImportSurroundings surroundings;
};

TEST_F(SalesTransactions, AddALineToTheTopLevelIncomeAccountOfItsItem) {
  Book(InvoiceLine(ItemRef("IT-1") + Amount("120.00")));
  EXPECT_EQ(Plants(), 120);
  EXPECT_EQ(SumOfAll(), 120);
}

TEST_F(SalesTransactions, UseTheIncomeSideOfAnItem) {
  Book(InvoiceLine(ItemRef("IT-2") + Amount("120.00")));
  EXPECT_EQ(Tools(), 120);
  EXPECT_EQ(SumOfAll(), 120);
}

TEST_F(SalesTransactions, SubtractALineWhoseItemPostsToAnExpenseAccount) {
  Book(InvoiceLine(ItemRef("IT-3") + Amount("30")));
  EXPECT_EQ(surroundings.Expense("Utilities", 5), -30);
  EXPECT_EQ(SumOfAll(), -30);
}

TEST_F(SalesTransactions, PreferTheIncomeAccountIfBothListsContainIt) {
  surroundings.state.expenseAccounts = fakes::ImportSurroundings::List("4", {fakes::Account("I-3", "Rent")});
  Book(InvoiceLine(ItemRef("IT-1") + Amount("120.00")));
  EXPECT_EQ(Plants(), 120);
  EXPECT_EQ(SumOfAll(), 120);
}

TEST_F(SalesTransactions, SkipALineWhoseItemPostsToAnUnlistedAccount) {
  Book(InvoiceLine(ItemRef("IT-5") + Amount("30")));
  EXPECT_EQ(SumOfAll(), 0);
}

TEST_F(SalesTransactions, ReduceTheIncomeByANegativeLine) {
  Book(InvoiceLine(ItemRef("IT-1") + Amount("120.00")) + InvoiceLine(ItemRef("IT-1") + Amount("-20.25")));
  EXPECT_EQ(Plants(), 99.75);
}

TEST_F(SalesTransactions, BookIntoTheMonthOfTheQuery) {
  Book(InvoiceLine(ItemRef("IT-1") + Amount("1")));
  Read(20, 12);
  EXPECT_EQ(Plants(), 1);
  EXPECT_EQ(surroundings.Income("Plants", 12), 1);
}

TEST_F(SalesTransactions, AreReadFromTheResponseAndLinesOfTheirKind) {
  const std::string lines =
      InvoiceLine(ItemRef("IT-1") + Amount("1")) + SalesReceiptLine(ItemRef("IT-1") + Amount("10"));
  surroundings.quickBooks->answers["20"] = RecordAnswer("InvoiceQueryRs", Element("InvoiceRet", lines));
  surroundings.quickBooks->answers["21"] =
      RecordAnswer("SalesReceiptQueryRs", Element("SalesReceiptRet", lines));
  Read(20);
  EXPECT_EQ(Plants(), 1);
  Read(21);
  EXPECT_EQ(Plants(), 11);
  surroundings.quickBooks->answers["21"] = surroundings.quickBooks->answers["20"];
  Read(21);
  EXPECT_EQ(Plants(), 11);
}

TEST_F(SalesTransactions, SkipALineWithoutItemOrAmount) {
  Book(InvoiceLine(Amount("5")) + InvoiceLine(ItemRef("IT-4") + Amount("0.00") + Quantity("3")) +
       InvoiceLine(ItemRef("IT-1")) + InvoiceLine(ItemRef("IT-1") + Amount("five")) + InvoiceLine("") +
       InvoiceLine(ItemRef("") + Amount("5")));
  EXPECT_EQ(SumOfAll(), 0);
}

TEST_F(SalesTransactions, ReuseNothingFromThePreviousLine) {
  Book(InvoiceLine(ItemRef("IT-1") + Amount("5")) + InvoiceLine(Amount("7")) + InvoiceLine(ItemRef("IT-1")) +
       InvoiceLine(ItemRef("IT-9") + Amount("11")) +
       InvoiceLine(ItemRef("IT-4") + Amount("1") + Quantity("4")) +
       InvoiceLine(ItemRef("IT-4") + Amount("1")));
  EXPECT_EQ(Plants(), 7);
  EXPECT_EQ(Seeds(), 12.5);
}

TEST_F(SalesTransactions, BookALineInsideAGroupOnceWithItsItem) {
  Book(Element("InvoiceLineGroupRet", ItemGroupRef("G-2") + Element("TotalAmount", "99") + Amount("99") +
                                          InvoiceLine(ItemRef("IT-1") + Amount("40")) +
                                          InvoiceLine(ItemRef("IT-2") + Amount("2"))));
  EXPECT_EQ(Plants(), 40);
  EXPECT_EQ(Tools(), 2);
  EXPECT_EQ(SumOfAll(), 42);
}

TEST_F(SalesTransactions, UseTheLinesGroupThenTheEnclosingGroupWithoutAnItem) {
  Book(Element("InvoiceLineGroupRet", ItemGroupRef("G-2") + InvoiceLine(Amount("1")) +
                                          InvoiceLine(ItemRef("") + Amount("2")) +
                                          InvoiceLine(ItemGroupRef("IT-1") + Amount("4")) +
                                          InvoiceLine(ItemGroupRef("") + Amount("8"))) +
       InvoiceLine(ItemGroupRef("G-2") + Amount("16")) +
       InvoiceLine(ItemRef("IT-1") + ItemGroupRef("G-2") + Amount("32")));
  EXPECT_EQ(Tools(), 1 + 2 + 8 + 16);
  EXPECT_EQ(Plants(), 4 + 32);
}

TEST_F(SalesTransactions, ReadTheItemFromTheFirstReferenceOnly) {
  Book(InvoiceLine(Element("ItemRef", "") + ItemRef("IT-1") + Amount("10.00")));
  EXPECT_EQ(SumOfAll(), 0);
}

TEST_F(SalesTransactions, BookLinesAnywhereInTheResponse) {
  const std::string line = InvoiceLine(ItemRef("IT-1") + Amount("1"));
  surroundings.quickBooks->answers["20"] =
      "<QBXML>" + line + "<InvoiceQueryRs>" + line + Element("InvoiceRet", Element("Deep", line)) +
      "</InvoiceQueryRs><InvoiceQueryRs>" + line + "</InvoiceQueryRs></QBXML>";
  Read(20);
  EXPECT_EQ(Plants(), 4);
}

TEST_F(SalesTransactions, BookTheCostAndIncomeOfAnInventoryItem) {
  Book(InvoiceLine(ItemRef("IT-4") + Quantity("3") + Amount("40")));
  EXPECT_EQ(Plants(), 40);
  EXPECT_EQ(Seeds(), 7.5);
  EXPECT_EQ(SumOfAll(), 47.5);
}

struct QuantityCase {
  const char* text;
  double cost;
};

TEST_F(SalesTransactions, UseOneForAQuantityThatIsNotANumberOrZero) {
  for (const auto& [text, cost] : {QuantityCase{"3", 7.5},
                                   {"", 2.5},
                                   {"0", 2.5},
                                   {"0.00", 2.5},
                                   {"two", 2.5},
                                   {"3 each", 2.5},
                                   {"-2", -5},
                                   {"1,000", 2500},
                                   {"(4)", -10},
                                   {" 2 ", 5}}) {
    surroundings.state.costSubtotals->At("Seeds").SubTotal(5, 0);
    Book(InvoiceLine(ItemRef("IT-4") + Amount("40") + Quantity(text)));
    EXPECT_EQ(Seeds(), cost) << text;
  }
  surroundings.state.costSubtotals->At("Seeds").SubTotal(5, 0);
  Book(InvoiceLine(ItemRef("IT-4") + Amount("40")));
  EXPECT_EQ(Seeds(), 2.5);
}

TEST_F(SalesTransactions, UseTheQuantityInSinglePrecision) {
  surroundings.SetItems(fakes::InventoryItem("IT-4", "I-1", "C-1", "10"));
  Book(InvoiceLine(ItemRef("IT-4") + Amount("40") + Quantity("0.1")));
  EXPECT_EQ(Seeds(), 1.0000000149011612);
}

TEST_F(SalesTransactions, UseAQuantityThatRoundsToTheLargestSingle) {
  constexpr double largest = std::numeric_limits<float>::max();
  surroundings.SetItems(fakes::InventoryItem("IT-4", "I-1", "C-1", "1"));
  for (const auto& [text, cost] : {QuantityCase{"3.4028235e38", largest},
                                   {"3.4028235677973362e38", largest},
                                   {"-3.4028235e38", -largest}}) {
    surroundings.state.costSubtotals->At("Seeds").SubTotal(5, 0);
    Book(InvoiceLine(ItemRef("IT-4") + Amount("40") + Quantity(text)));
    EXPECT_EQ(Seeds(), cost) << text;
  }
}

TEST_F(SalesTransactions, UseOneForAQuantityOutOfRange) {
  for (const char* text : {"3.4028235677973366e38", "-3.4028235677973366e38", "1E39"}) {
    surroundings.state.costSubtotals->At("Seeds").SubTotal(5, 0);
    surroundings.state.incomeSubtotals->At("Plants").SubTotal(5, 0);
    Book(InvoiceLine(ItemRef("IT-4") + Amount("40") + Quantity(text)));
    EXPECT_EQ(Seeds(), 2.5) << text;
    EXPECT_EQ(Plants(), 40) << text;
  }
}

TEST_F(SalesTransactions, BookOnlyTheIncomeWithoutAverageCostOrCostAccount) {
  const std::string income = fakes::Reference("IncomeAccountRef", "I-1");
  surroundings.SetItems(Item("ItemInventoryRet", "IT-6", income + fakes::Reference("COGSAccountRef", "C-1")) +
                        Item("ItemInventoryRet", "IT-7", income + Element("AverageCost", "2.5")));
  Book(InvoiceLine(ItemRef("IT-6") + Amount("1")) + InvoiceLine(ItemRef("IT-7") + Amount("2")));
  EXPECT_EQ(Plants(), 3);
  EXPECT_EQ(SumOfAll(), 3);
}

TEST_F(SalesTransactions, BookOnlyTheIncomeIfTheCostAccountIsUnlisted) {
  surroundings.SetItems(fakes::InventoryItem("IT-4", "I-1", "X-9", "2.5"));
  Book(InvoiceLine(ItemRef("IT-4") + Amount("40")));
  EXPECT_EQ(SumOfAll(), 40);
  surroundings.state.costAccounts = AccountList();
  surroundings.state.costSubtotals.reset();
  surroundings.SetItems(fakes::InventoryItem("IT-4", "I-1", "C-1", "2.5"));
  Book(InvoiceLine(ItemRef("IT-4") + Amount("40")));
  EXPECT_EQ(Plants(), 80);
}

TEST_F(SalesTransactions, BookOnlyTheCostIfTheIncomeAccountIsUnlisted) {
  surroundings.SetItems(fakes::InventoryItem("IT-4", "X-9", "C-1", "2.5"));
  Book(InvoiceLine(ItemRef("IT-4") + Amount("40")));
  EXPECT_EQ(Seeds(), 2.5);
  EXPECT_EQ(SumOfAll(), 2.5);
}

TEST_F(SalesTransactions, SkipTheIncomeIfTheMarkerIsMalformed) {
  surroundings.SetItems(fakes::InventoryItem("IT-4", "I-1", "C-1", "&lt;2") + OneAccountItem("IT-1", "I-1"));
  Book(InvoiceLine(ItemRef("IT-4") + Amount("40")) + InvoiceLine(ItemRef("IT-1") + Amount("1")));
  EXPECT_EQ(SumOfAll(), 1);
}

TEST_F(SalesTransactions, BookByTheMarkersTextIfAPartHasAQuoteOrAmpersand) {
  for (const char* costId : {"C-1&quot; x=&quot;", "C&amp;#45;1"}) {
    surroundings.SetItems(fakes::InventoryItem("IT-4", "I-1", costId, "2.5"));
    Book(InvoiceLine(ItemRef("IT-4") + Amount("40")));
  }
  EXPECT_EQ(Seeds(), 5) << "both texts read back as C-1";
  EXPECT_EQ(Plants(), 80);
  surroundings.SetItems(fakes::InventoryItem("IT-4", "I-1&quot; averagecost=&quot;4", "C-1", "2.5"));
  Book(InvoiceLine(ItemRef("IT-4") + Amount("40")));
  EXPECT_EQ(surroundings.SumOfAll(), 85) << "a repeated attribute makes the marker malformed";
}

TEST_F(SalesTransactions, BookByTheMarkersTextIfAPartHasATabOrLineBreak) {
  surroundings.state.costAccounts = fakes::ImportSurroundings::List("2", {fakes::Account("C 1", "Seeds")});
  for (const char* costId : {"C&#9;1", "C\n1", "C&#13;1"}) {
    surroundings.SetItems(fakes::InventoryItem("IT-4", "I-1", costId, "2.5"));
    Book(InvoiceLine(ItemRef("IT-4") + Amount("40")));
  }
  EXPECT_EQ(Seeds(), 7.5);
  EXPECT_EQ(Plants(), 120);
}

TEST_F(SalesTransactions, BookTheCostOfAnAccountIdThatIsAMarker) {
  surroundings.SetItems(
      OneAccountItem("IT-4", "&lt;COGS cogsid=&quot;C-1&quot; workid='I-2' averagecost='4'/>"));
  Book(InvoiceLine(ItemRef("IT-4") + Amount("40") + Quantity("2")) +
       InvoiceLine(ItemRef("IT-4") + Amount("1")));
  EXPECT_EQ(Seeds(), 12);
  EXPECT_EQ(Tools(), 41);
  EXPECT_EQ(SumOfAll(), 53);
}

TEST_F(SalesTransactions, SkipTheIncomeIfAnAccountIdOnlyBeginsAsAMarker) {
  surroundings.state.incomeAccounts =
      fakes::ImportSurroundings::List("1", {fakes::Account("&lt;COGS", "Plants")});
  surroundings.SetItems(OneAccountItem("IT-4", "&lt;COGS1"));
  Book(InvoiceLine(ItemRef("IT-4") + Amount("40")));
  EXPECT_EQ(SumOfAll(), 0);
  const auto skipped = surroundings.SkippedAmounts();
  ASSERT_EQ(skipped.size(), 1U);
  EXPECT_EQ(skipped[0].skipped.value_or(Skipped{}).account, "<COGS1");
}

TEST_F(SalesTransactions, ReportTheMarkerIfTheCostCannotBeBooked) {
  surroundings.state.costSubtotals = fakes::ImportSurroundings::Zeros({"Freight"});
  Book(InvoiceLine(ItemRef("IT-4") + Amount("40")));
  const auto skipped = surroundings.SkippedAmounts();
  ASSERT_EQ(skipped.size(), 1U);
  EXPECT_EQ(skipped[0].skipped.value_or(Skipped{}).account,
            "<COGS  cogsid=\"C-3\" workid=\"I-1\" averagecost=\"2.5\"/>");
}

TEST_F(SalesTransactions, SkipTheIncomeWithoutTheCostSubtotal) {
  surroundings.state.costSubtotals = fakes::ImportSurroundings::Zeros({"Freight"});
  Book(InvoiceLine(ItemRef("IT-4") + Amount("40")) + InvoiceLine(ItemRef("IT-1") + Amount("1")));
  EXPECT_EQ(SumOfAll(), 1);
  surroundings.state.costSubtotals.reset();
  Book(InvoiceLine(ItemRef("IT-4") + Amount("40")));
  EXPECT_EQ(SumOfAll(), 1);
}

TEST_F(SalesTransactions, SkipTheIncomeIfTheCostIsOutOfRange) {
  surroundings.SetItems(fakes::InventoryItem("IT-4", "I-1", "C-1", "1E308"));
  Book(InvoiceLine(ItemRef("IT-4") + Amount("40") + Quantity("2")));
  EXPECT_EQ(SumOfAll(), 0);
}

TEST_F(SalesTransactions, SkipALineWithoutASubtotalForItsAccount) {
  surroundings.state.incomeSubtotals = fakes::ImportSurroundings::Zeros({"Tools"});
  Book(InvoiceLine(ItemRef("IT-1") + Amount("1")) + InvoiceLine(ItemRef("IT-2") + Amount("2")));
  EXPECT_EQ(Tools(), 2);
  surroundings.state.incomeSubtotals.reset();
  Book(InvoiceLine(ItemRef("IT-1") + Amount("1")) + InvoiceLine(ItemRef("IT-3") + Amount("2")));
  EXPECT_EQ(SumOfAll(), -2);
}

TEST_F(SalesTransactions, KeepASubtotalIfTheSumIsOutOfRange) {
  const std::string line = InvoiceLine(ItemRef("IT-1") + Amount("1.7976931348623157E+308"));
  Book(line + line + InvoiceLine(ItemRef("IT-2") + Amount("1")));
  EXPECT_EQ(Plants(), std::numeric_limits<double>::max());
  EXPECT_EQ(Tools(), 1);
}

TEST_F(SalesTransactions, ChangeNothingWithoutAnItemList) {
  surroundings.state.itemListDocument = ItemList();
  Book(InvoiceLine(ItemRef("IT-1") + Amount("1")));
  EXPECT_EQ(SumOfAll(), 0);
}

TEST_F(SalesTransactions, ChangeNothingAfterARefusedRequest) {
  surroundings.journal->Fail("ProcessRequest 20 2002-05-01 2002-05-31", Error(-2147220477, "unexpected"));
  Book(InvoiceLine(ItemRef("IT-1") + Amount("1")));
  EXPECT_EQ(SumOfAll(), 0);
  EXPECT_EQ(surroundings.errorPair.number, 0);
  ASSERT_EQ(surroundings.observer.notices.size(), 2U);
  EXPECT_EQ(surroundings.observer.notices[0].kind, NoticeKind::RequestRefused);
  EXPECT_EQ(surroundings.observer.notices[0].number, -2147220477);
  EXPECT_EQ(surroundings.observer.notices[1].kind, NoticeKind::StatementSkipped);
  EXPECT_EQ(surroundings.observer.notices[1].number, -2147220477);
}

}  // namespace
}  // namespace krnqb
