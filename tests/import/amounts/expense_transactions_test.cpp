#include "import/amounts/expense_transactions.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "fakes/import_surroundings.h"
#include "qbxml/request_catalogue.h"

namespace krnqb {
namespace {

using fakes::AccountRef;
using fakes::Amount;
using fakes::Element;
using fakes::ExpenseLine;
using fakes::ItemLine;
using fakes::ItemRef;
using fakes::OneAccountItem;
using fakes::RecordAnswer;
using fakes::TwoAccountItem;

class ExpenseTransactions : public testing::Test {
 protected:
  /// Books the lines of one bill.
  void Book(const std::string& lines) {
    surroundings.quickBooks->answers["10"] = RecordAnswer("BillQueryRs", Element("BillRet", lines));
    Read(10);
  }
  void Read(std::int32_t kind, std::int16_t month = 2) {
    const DateRange range{"2002-02-01", "2002-02-28"};
    ReadExpenseTransactions(surroundings.context,
                            {.kind = kind,
                             .request = BuildRequest(kind, range.fromDate, range.toDate),
                             .month = month,
                             .range = range});
  }

  double Rent() const { return surroundings.Expense("Rent", 2); }
  double Utilities() const { return surroundings.Expense("Utilities", 2); }
  double Plants() const { return surroundings.Income("Plants", 2); }
  double SumOfAll() const { return surroundings.SumOfAll(); }

  fakes::ImportSurroundings surroundings;
};

TEST_F(ExpenseTransactions, AddALineToItsExpenseAccount) {
  Book(ExpenseLine(AccountRef("E-1") + Amount("100.00")));
  EXPECT_EQ(Rent(), 100);
  EXPECT_EQ(SumOfAll(), 100);
}

TEST_F(ExpenseTransactions, AddALineToTheParentOfItsAccount) {
  Book(ExpenseLine(AccountRef("E-3") + Amount("100.00")));
  EXPECT_EQ(Utilities(), 100);
  EXPECT_EQ(SumOfAll(), 100);
}

TEST_F(ExpenseTransactions, SubtractALineFromItsIncomeAccount) {
  Book(ExpenseLine(AccountRef("I-3") + Amount("50.00")));
  EXPECT_EQ(Plants(), -50);
  EXPECT_EQ(SumOfAll(), -50);
}

TEST_F(ExpenseTransactions, PreferTheExpenseAccountIfBothListsContainIt) {
  surroundings.state.incomeAccounts = fakes::ImportSurroundings::List("1", {fakes::Account("E-1", "Plants")});
  Book(ExpenseLine(AccountRef("E-1") + Amount("5")));
  EXPECT_EQ(Rent(), 5);
  EXPECT_EQ(SumOfAll(), 5);
}

TEST_F(ExpenseTransactions, SkipAnAccountThatIsNeitherExpenseNorIncome) {
  Book(ExpenseLine(AccountRef("C-1") + Amount("50.00")) + ExpenseLine(AccountRef("X-9") + Amount("1")));
  EXPECT_EQ(SumOfAll(), 0);
}

TEST_F(ExpenseTransactions, BookIntoTheMonthOfTheQuery) {
  surroundings.quickBooks->answers["10"] =
      RecordAnswer("BillQueryRs", Element("BillRet", ExpenseLine(AccountRef("E-1") + Amount("3"))));
  Read(10, 1);
  Read(10, 12);
  Read(10, 12);
  EXPECT_EQ(surroundings.Expense("Rent", 1), 3);
  EXPECT_EQ(surroundings.Expense("Rent", 12), 6);
  EXPECT_EQ(SumOfAll(), 9);
}

TEST_F(ExpenseTransactions, AddEveryLineOfEveryTransactionWithItsSign) {
  surroundings.quickBooks->answers["10"] =
      RecordAnswer("BillQueryRs", Element("BillRet", ExpenseLine(AccountRef("E-1") + Amount("100.25")) +
                                                         ExpenseLine(AccountRef("E-2") + Amount("7"))) +
                                      Element("BillRet", ExpenseLine(AccountRef("E-1") + Amount("-20.5"))));
  Read(10);
  EXPECT_EQ(Rent(), 79.75);
  EXPECT_EQ(Utilities(), 7);
}

TEST_F(ExpenseTransactions, AreReadFromTheResponseOfTheirKind) {
  const std::string record = Element("BillRet", ExpenseLine(AccountRef("E-1") + Amount("1")));
  surroundings.quickBooks->answers["10"] = RecordAnswer("BillQueryRs", record);
  surroundings.quickBooks->answers["11"] = RecordAnswer("CheckQueryRs", record);
  surroundings.quickBooks->answers["12"] = RecordAnswer("CreditCardChargeQueryRs", record);
  for (const int kind : {10, 11, 12}) Read(kind);
  EXPECT_EQ(Rent(), 3);
  surroundings.quickBooks->answers["10"] = RecordAnswer("CheckQueryRs", record);
  surroundings.quickBooks->answers["11"] = RecordAnswer("CreditCardChargeQueryRs", record);
  surroundings.quickBooks->answers["12"] = RecordAnswer("BillQueryRs", record);
  for (const int kind : {10, 11, 12}) Read(kind);
  EXPECT_EQ(Rent(), 3);
}

TEST_F(ExpenseTransactions, PostAnItemLineToTheItemsExpenseAccount) {
  surroundings.SetItems(TwoAccountItem("IT-1", "I-1", "E-1") + OneAccountItem("IT-2", "E-3"));
  Book(ItemLine(ItemRef("IT-1") + Amount("40")) + ItemLine(ItemRef("IT-2") + Amount("2")));
  EXPECT_EQ(Rent(), 40);
  EXPECT_EQ(Utilities(), 2);
  EXPECT_EQ(SumOfAll(), 42);
}

TEST_F(ExpenseTransactions, SubtractAnItemLineWhoseItemPostsToAnIncomeAccount) {
  surroundings.SetItems(OneAccountItem("IT-1", "I-1"));
  Book(ItemLine(ItemRef("IT-1") + Amount("40")));
  EXPECT_EQ(Plants(), -40);
}

TEST_F(ExpenseTransactions, SkipAnItemLineWhoseItemHasNoAccount) {
  surroundings.SetItems(fakes::Item("ItemGroupRet", "IT-1", "") +
                        fakes::InventoryItem("IT-2", "I-1", "C-1", "2.5"));
  Book(ItemLine(ItemRef("IT-1") + Amount("40")) + ItemLine(ItemRef("IT-2") + Amount("40")) +
       ItemLine(ItemRef("IT-3") + Amount("40")));
  EXPECT_EQ(SumOfAll(), 0);
}

TEST_F(ExpenseTransactions, PostAnItemLineByItsItemOnly) {
  surroundings.SetItems(OneAccountItem("IT-1", "E-2"));
  Book(ItemLine(AccountRef("E-1") + ItemRef("IT-1") + Amount("40")) +
       ItemLine(AccountRef("E-1") + Amount("1")) + ExpenseLine(ItemRef("IT-1") + Amount("1")));
  EXPECT_EQ(Utilities(), 40);
  EXPECT_EQ(SumOfAll(), 40);
}

TEST_F(ExpenseTransactions, SkipTheLinesOfAnItemGroup) {
  surroundings.SetItems(OneAccountItem("IT-1", "E-1"));
  Book(Element("ItemGroupLineRet", fakes::ItemGroupRef("G-1") + ItemLine(ItemRef("IT-1") + Amount("40"))) +
       ItemLine(ItemRef("IT-1") + Amount("2")));
  EXPECT_EQ(Rent(), 2);
  EXPECT_EQ(SumOfAll(), 2);
}

TEST_F(ExpenseTransactions, ReadTheAccountFromTheFirstReferenceOnly) {
  Book(ExpenseLine(Element("AccountRef", "") + AccountRef("E-1") + Amount("100.00")));
  EXPECT_EQ(SumOfAll(), 0);
  Book(ExpenseLine(AccountRef("E-1") + AccountRef("E-2") + Amount("100.00")));
  EXPECT_EQ(Rent(), 100);
}

TEST_F(ExpenseTransactions, ReadTheItemFromTheFirstReferenceOnly) {
  surroundings.SetItems(OneAccountItem("IT-1", "E-1"));
  Book(ItemLine(Element("ItemRef", "") + ItemRef("IT-1") + Amount("100.00")));
  EXPECT_EQ(SumOfAll(), 0);
}

TEST_F(ExpenseTransactions, ReuseNothingFromThePreviousLine) {
  surroundings.SetItems(OneAccountItem("IT-1", "E-1"));
  Book(ExpenseLine(AccountRef("E-1") + Amount("5")) + ExpenseLine(Amount("7")) +
       ExpenseLine(AccountRef("E-1")) + ExpenseLine(AccountRef("E-1") + Amount("none")) +
       ItemLine(Amount("9")) + ItemLine(ItemRef("IT-1") + Amount("11")) +
       ItemLine(ItemRef("IT-2") + Amount("13")));
  EXPECT_EQ(Rent(), 16);
  EXPECT_EQ(SumOfAll(), 16);
}

struct AmountCase {
  const char* text;
  double amount;
};

TEST_F(ExpenseTransactions, ConvertAmountsStrictly) {
  for (const auto& [text, amount] : {AmountCase{"14175.00", 14175},
                                     {" 5 ", 5},
                                     {"5-", -5},
                                     {"(50.00)", -50},
                                     {"$1,250.50", 1250.5},
                                     {"1E2", 100},
                                     {".25", 0.25},
                                     {"", 0},
                                     {"5 each", 0},
                                     {"1.2.3", 0},
                                     {"1e999", 0}}) {
    surroundings.state.expenseSubtotals->At("Rent").SubTotal(2, 0);
    Book(ExpenseLine(AccountRef("E-1") + Amount(text)));
    EXPECT_EQ(Rent(), amount) << text;
  }
}

TEST_F(ExpenseTransactions, SkipALineWithoutASubtotalForItsAccount) {
  surroundings.state.expenseSubtotals = fakes::ImportSurroundings::Zeros({"Utilities"});
  surroundings.state.incomeAccounts = fakes::ImportSurroundings::List("1", {fakes::Account("E-1", "Plants")});
  Book(ExpenseLine(AccountRef("E-1") + Amount("5")) + ExpenseLine(AccountRef("E-2") + Amount("6")));
  EXPECT_EQ(Utilities(), 6);
  EXPECT_EQ(SumOfAll(), 6) << "the income account of the same id is not tried";
}

TEST_F(ExpenseTransactions, SkipEveryLineWithoutACollection) {
  surroundings.state.expenseSubtotals.reset();
  Book(ExpenseLine(AccountRef("E-1") + Amount("5")) + ExpenseLine(AccountRef("I-1") + Amount("6")));
  EXPECT_EQ(Plants(), -6);
  surroundings.state.incomeSubtotals.reset();
  Book(ExpenseLine(AccountRef("I-1") + Amount("6")));
  EXPECT_EQ(SumOfAll(), 0);
}

TEST_F(ExpenseTransactions, TryTheIncomeAccountsWithoutAnExpenseList) {
  surroundings.state.expenseAccounts = AccountList();
  surroundings.state.expenseSubtotals.reset();
  Book(ExpenseLine(AccountRef("E-1") + Amount("5")) + ExpenseLine(AccountRef("I-1") + Amount("6")));
  EXPECT_EQ(SumOfAll(), -6);
}

TEST_F(ExpenseTransactions, KeepASubtotalIfTheSumIsOutOfRange) {
  Book(ExpenseLine(AccountRef("E-1") + Amount("1.7976931348623157E+308")) +
       ExpenseLine(AccountRef("E-1") + Amount("1.7976931348623157E+308")) +
       ExpenseLine(AccountRef("E-2") + Amount("1")));
  EXPECT_EQ(Rent(), std::numeric_limits<double>::max());
  EXPECT_EQ(Utilities(), 1);
}

TEST_F(ExpenseTransactions, ChangeNothingWithoutAResponse) {
  for (const std::string answer : {"", "no document", "<QBXML/>", "<BillQueryRs/>"}) {
    surroundings.quickBooks->answers["10"] = answer;
    Read(10);
  }
  surroundings.quickBooks->answers["10"] = fakes::StatusAnswer("BillQueryRs", "1");
  Read(10);
  EXPECT_EQ(SumOfAll(), 0);
  EXPECT_EQ(surroundings.errorPair.number, 0);
}

TEST_F(ExpenseTransactions, ChangeNothingAfterARefusedRequest) {
  surroundings.journal->Fail("ProcessRequest 10 2002-02-01 2002-02-28", Error(-2147220477, "unexpected"));
  Book(ExpenseLine(AccountRef("E-1") + Amount("5")));
  EXPECT_EQ(SumOfAll(), 0);
  EXPECT_EQ(surroundings.errorPair.number, 0);
  ASSERT_EQ(surroundings.observer.notices.size(), 2U);
  EXPECT_EQ(surroundings.observer.notices[0].kind, NoticeKind::RequestRefused);
  EXPECT_EQ(surroundings.observer.notices[1].kind, NoticeKind::StatementSkipped);
  EXPECT_EQ(surroundings.observer.notices[0].number, -2147220477);
  EXPECT_EQ(surroundings.observer.notices[0].place.request, 10);
}

TEST_F(ExpenseTransactions, ChangeNothingWithoutASession) {
  surroundings.processors.refusal = Error(error_number::cannotCreateObject);
  Book(ExpenseLine(AccountRef("E-1") + Amount("5")));
  EXPECT_EQ(SumOfAll(), 0);
}

}  // namespace
}  // namespace krnqb
