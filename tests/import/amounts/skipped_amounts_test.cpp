#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/import_surroundings.h"
#include "import/amounts/expense_transactions.h"
#include "import/amounts/sales_transactions.h"
#include "qbxml/request_catalogue.h"

// Every amount that is not imported is reported with its reason.

namespace krnqb {
namespace {

using fakes::AccountRef;
using fakes::Amount;
using fakes::CustomerRef;
using fakes::Element;
using fakes::ExpenseLine;
using fakes::InvoiceLine;
using fakes::ItemLine;
using fakes::ItemRef;
using Reasons = std::vector<SkipReason>;

class SkippedAmounts : public testing::Test {
 protected:
  SkippedAmounts() {
    surroundings.SetItems(fakes::OneAccountItem("IT-1", "I-1") + fakes::Item("ItemGroupRet", "IT-2", "") +
                          fakes::OneAccountItem("IT-3", "X-9") +
                          fakes::InventoryItem("IT-4", "I-1", "C-1", "2.5"));
  }

  /// Books the lines of a check of 2002-02-14 and returns the reasons reported, in order.
  Reasons Spend(const std::string& lines) {
    surroundings.observer.notices.clear();
    surroundings.quickBooks->answers["11"] = fakes::RecordAnswer(
        "CheckQueryRs", Element("CheckRet", fakes::Transaction("T-1", "2002-02-14") + lines));
    ReadExpenseTransactions(surroundings.context, Query(11));
    return surroundings.SkipReasons();
  }
  Reasons Sell(const std::string& lines) {
    surroundings.observer.notices.clear();
    surroundings.quickBooks->answers["21"] = fakes::RecordAnswer(
        "SalesReceiptQueryRs", Element("SalesReceiptRet", fakes::Transaction("T-2", "2002-02-15") + lines));
    ReadSalesTransactions(surroundings.context, Query(21));
    return surroundings.SkipReasons();
  }
  static TransactionQuery Query(std::int32_t kind) {
    const DateRange range{"2002-02-01", "2002-02-28"};
    return {.kind = kind,
            .request = BuildRequest(kind, range.fromDate, range.toDate),
            .month = 2,
            .range = range};
  }
  static std::string Sale(const std::string& fields) { return fakes::SalesReceiptLine(fields); }

  fakes::ImportSurroundings surroundings;
};

TEST_F(SkippedAmounts, AreReportedWithRequestPeriodTransactionAccountAndAmount) {
  Spend(ExpenseLine(AccountRef("X-9") + Amount("75.50")));
  ASSERT_EQ(surroundings.SkippedAmounts().size(), 1U);
  const Notice notice = surroundings.SkippedAmounts()[0];
  EXPECT_EQ(notice.place.operation, Operation::ReadExpenseTransactions);
  EXPECT_EQ(notice.place.request, 11);
  EXPECT_EQ(notice.place.fromDate, "2002-02-01");
  EXPECT_EQ(notice.place.toDate, "2002-02-28");
  ASSERT_TRUE(notice.skipped);
  EXPECT_EQ(notice.skipped->reason, SkipReason::AccountInNoList);
  EXPECT_EQ(notice.skipped->transactionId, "T-1");
  EXPECT_EQ(notice.skipped->transactionDate, "2002-02-14");
  EXPECT_EQ(notice.skipped->source, "ExpenseLineRet");
  EXPECT_EQ(notice.skipped->account, "X-9");
  EXPECT_EQ(notice.skipped->amount, "75.50");
}

TEST_F(SkippedAmounts, OfSalesAreReportedLikewise) {
  Sell(Sale(ItemRef("IT-3") + Amount("75.50")));
  ASSERT_EQ(surroundings.SkippedAmounts().size(), 1U);
  const Notice notice = surroundings.SkippedAmounts()[0];
  EXPECT_EQ(notice.place.operation, Operation::ReadSalesTransactions);
  EXPECT_EQ(notice.place.request, 21);
  EXPECT_EQ(notice.place.fromDate, "2002-02-01");
  ASSERT_TRUE(notice.skipped);
  EXPECT_EQ(notice.skipped->reason, SkipReason::AccountInNoList);
  EXPECT_EQ(notice.skipped->transactionId, "T-2");
  EXPECT_EQ(notice.skipped->transactionDate, "2002-02-15");
  EXPECT_EQ(notice.skipped->source, "SalesReceiptLineRet");
  EXPECT_EQ(notice.skipped->account, "X-9");
  EXPECT_EQ(notice.skipped->amount, "75.50");
}

TEST_F(SkippedAmounts, AreNotReportedIfEveryLineIsBooked) {
  EXPECT_EQ(Spend(ExpenseLine(AccountRef("E-1") + Amount("1")) +
                  ExpenseLine(AccountRef("I-1") + Amount("2") + CustomerRef("K-1")) +
                  ItemLine(ItemRef("IT-1") + Amount("3"))),
            Reasons{});
  EXPECT_EQ(Sell(Sale(ItemRef("IT-1") + Amount("1")) + Sale(ItemRef("IT-4") + Amount("2"))), Reasons{});
  EXPECT_TRUE(surroundings.observer.notices.empty());
}

TEST_F(SkippedAmounts, AreNotReportedForZero) {
  EXPECT_EQ(Spend(ExpenseLine(AccountRef("X-9") + Amount("0.00")) + ItemLine(Amount("0"))), Reasons{});
  EXPECT_EQ(Sell(Sale(ItemRef("IT-3") + Amount("0.00")) + Sale(Amount("0"))), Reasons{});
}

TEST_F(SkippedAmounts, OfPurchasesAreReportedWithTheirReasons) {
  EXPECT_EQ(Spend(ExpenseLine(AccountRef("E-1") + Amount("five"))), Reasons{SkipReason::AmountIsNoNumber});
  EXPECT_EQ(Spend(ExpenseLine(Amount("5"))), Reasons{SkipReason::NoAccount});
  EXPECT_EQ(Spend(ExpenseLine(AccountRef("") + Amount("5"))), Reasons{SkipReason::NoAccount});
  EXPECT_EQ(Spend(ItemLine(Amount("5"))), Reasons{SkipReason::NoItem});
  EXPECT_EQ(Spend(ItemLine(ItemRef("IT-2") + Amount("5"))), Reasons{SkipReason::ItemWithoutAccount});
  EXPECT_EQ(surroundings.SkippedAmounts()[0].skipped->account, "IT-2");
  EXPECT_EQ(Spend(ItemLine(ItemRef("IT-9") + Amount("5"))), Reasons{SkipReason::ItemWithoutAccount});
  EXPECT_EQ(Spend(ItemLine(ItemRef("IT-3") + Amount("5"))), Reasons{SkipReason::AccountInNoList});
  EXPECT_EQ(Spend(Element("ItemGroupLineRet", ItemLine(ItemRef("IT-1") + Amount("5")))),
            Reasons{SkipReason::InsideItemGroup});
  surroundings.state.expenseSubtotals = fakes::ImportSurroundings::Zeros({"Rent"});
  EXPECT_EQ(Spend(ExpenseLine(AccountRef("E-2") + Amount("5"))), Reasons{SkipReason::NoSubtotal});
  surroundings.state.expenseSubtotals.reset();
  EXPECT_EQ(Spend(ExpenseLine(AccountRef("E-1") + Amount("5"))), Reasons{SkipReason::NoSubtotal});
}

TEST_F(SkippedAmounts, OfSalesAreReportedWithTheirReasons) {
  EXPECT_EQ(Sell(Sale(ItemRef("IT-1") + Amount("five"))), Reasons{SkipReason::AmountIsNoNumber});
  EXPECT_EQ(Sell(Sale(Amount("5"))), Reasons{SkipReason::NoItem});
  EXPECT_EQ(Sell(Sale(ItemRef("IT-2") + Amount("5"))), Reasons{SkipReason::ItemWithoutAccount});
  EXPECT_EQ(Sell(Sale(ItemRef("IT-3") + Amount("5"))), Reasons{SkipReason::AccountInNoList});
  surroundings.state.incomeSubtotals = fakes::ImportSurroundings::Zeros({"Tools"});
  EXPECT_EQ(Sell(Sale(ItemRef("IT-1") + Amount("5"))), Reasons{SkipReason::NoSubtotal});
}

TEST_F(SkippedAmounts, IncludeASumOutOfRange) {
  const std::string huge = Amount("1.7976931348623157E+308");
  EXPECT_EQ(Spend(ExpenseLine(AccountRef("E-1") + huge) + ExpenseLine(AccountRef("E-1") + huge)),
            Reasons{SkipReason::SubtotalOutOfRange});
  EXPECT_EQ(Sell(Sale(ItemRef("IT-1") + huge) + Sale(ItemRef("IT-1") + huge)),
            Reasons{SkipReason::SubtotalOutOfRange});
}

TEST_F(SkippedAmounts, IncludeASecondExpenseOfTheSameCustomerAndAmount) {
  const std::string line = ExpenseLine(AccountRef("E-1") + Amount("75.00") + CustomerRef("K-1"));
  EXPECT_EQ(Spend(line + line), Reasons{SkipReason::DuplicateBillableKey});
  EXPECT_EQ(surroundings.SkippedAmounts()[0].skipped->amount, "75.00");
  EXPECT_EQ(surroundings.Expense("Rent", 2), 150) << "both are booked";
}

TEST_F(SkippedAmounts, ExcludeTheBillingOfARecordedExpense) {
  Spend(ExpenseLine(AccountRef("E-1") + Amount("75.00") + CustomerRef("K-1")));
  EXPECT_EQ(Sell(CustomerRef("K-1") + Sale(ItemRef("IT-2") + Amount("75.00"))), Reasons{});
  EXPECT_EQ(Sell(CustomerRef("K-1") + Sale(ItemRef("IT-2") + Amount("75.01"))),
            Reasons{SkipReason::ItemWithoutAccount});
}

TEST_F(SkippedAmounts, IncludeIncomeWhoseCostCannotBeBooked) {
  surroundings.state.costSubtotals.reset();
  EXPECT_EQ(Sell(Sale(ItemRef("IT-4") + Amount("40.00"))).size(), 1U);
  EXPECT_EQ(surroundings.SkippedAmounts()[0].skipped->amount, "40.00");
  EXPECT_EQ(surroundings.SkippedAmounts()[0].skipped->transactionId, "T-2");
  surroundings.SetItems(fakes::InventoryItem("IT-4", "I-1", "C-1", "&lt;2"));
  EXPECT_EQ(Sell(Sale(ItemRef("IT-4") + Amount("41.00"))).size(), 1U);
  EXPECT_EQ(surroundings.SkippedAmounts()[0].skipped->amount, "41.00");
}

TEST_F(SkippedAmounts, ChangeNeitherOtherAmountsNorTheErrorPair) {
  Spend(ExpenseLine(AccountRef("X-9") + Amount("5")) + ExpenseLine(AccountRef("E-1") + Amount("7")));
  EXPECT_EQ(surroundings.SumOfAll(), 7);
  EXPECT_EQ(surroundings.errorPair.number, 0);
  EXPECT_EQ(surroundings.errorPair.description, "");
}

TEST_F(SkippedAmounts, IncludeALineWithoutAnAmount) {
  EXPECT_EQ(Spend(ExpenseLine(AccountRef("E-1"))), Reasons{SkipReason::AmountIsNoNumber});
  EXPECT_EQ(Sell(Sale(ItemRef("IT-1"))), Reasons{SkipReason::AmountIsNoNumber});
}

using Kinds = std::vector<SkipKind>;

Kinds KindsOf(const std::vector<Notice>& notices) {
  Kinds kinds;
  for (const Notice& notice : notices) kinds.push_back(notice.skipped->kind);
  return kinds;
}

TEST_F(SkippedAmounts, AreLostOrNotImportedByReason) {
  surroundings.state.options.includeExpenseAccounts = true;
  surroundings.state.options.includeIncomeAccounts = true;
  Spend(ExpenseLine(AccountRef("X-9") + Amount("5")) + ExpenseLine(Amount("5")) +
        ExpenseLine(AccountRef("E-1")) + fakes::ItemLine(ItemRef("IT-9") + Amount("5")) +
        fakes::ItemLine(Amount("5")));
  EXPECT_EQ(
      KindsOf(surroundings.SkippedAmounts()),
      (Kinds{SkipKind::NotImported, SkipKind::Lost, SkipKind::Lost, SkipKind::NotImported, SkipKind::Lost}));
}

TEST_F(SkippedAmounts, OfAListThatIsNotIncludedWereNotRequested) {
  surroundings.state.options.includeExpenseAccounts = true;
  Spend(ExpenseLine(AccountRef("X-9") + Amount("5")));
  EXPECT_EQ(KindsOf(surroundings.SkippedAmounts()), Kinds{SkipKind::NotRequested});
}

TEST_F(SkippedAmounts, HaveTheNamesBesideTheIds) {
  const auto reference = [](const char* name, const char* id, const char* fullName) {
    return fakes::Element(name, fakes::Element("ListID", id) + fakes::Element("FullName", fullName));
  };
  Spend(ExpenseLine(reference("AccountRef", "X-9", "Assets:Stock") +
                    reference("CustomerRef", "K-1", "Ms Wood") + Amount("5")));
  const Skipped skipped = *surroundings.SkippedAmounts()[0].skipped;
  EXPECT_EQ(skipped.account, "X-9");
  EXPECT_EQ(skipped.accountName, "Assets:Stock");
  EXPECT_EQ(skipped.customer, "K-1");
  EXPECT_EQ(skipped.customerName, "Ms Wood");
}

TEST_F(SkippedAmounts, HaveTheNamesOfTheListsIfTheLineHasNone) {
  surroundings.SetItems(fakes::Element(
      "ItemServiceRet",
      fakes::Element("ListID", "IT-1") + fakes::Element("FullName", "Care:Lawns") +
          fakes::Element("SalesOrPurchase",
                         fakes::Element("AccountRef", fakes::Element("ListID", "X-9") +
                                                          fakes::Element("FullName", "Stock")))));
  Sell(Sale(ItemRef("IT-1") + Amount("5")));
  const Skipped skipped = *surroundings.SkippedAmounts()[0].skipped;
  EXPECT_EQ(skipped.account, "X-9");
  EXPECT_EQ(skipped.accountName, "Stock");
  surroundings.SetItems(
      fakes::Element("ItemDiscountRet", fakes::Element("ListID", "IT-2") + fakes::Element("Name", "Rebate")));
  Sell(Sale(ItemRef("IT-2") + Amount("5")));
  EXPECT_EQ(surroundings.SkippedAmounts().back().skipped->accountName, "Rebate");
}

}  // namespace
}  // namespace krnqb
