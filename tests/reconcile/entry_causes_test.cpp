#include "reconcile/entry_causes.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "reconcile/amounts.h"

namespace krnqb::reconcile {
namespace {

// One line of a transaction, as an import books it and as the ledger posts it.
class ComparingEntries : public testing::Test {
 protected:
  std::uint32_t LineOf(Group group, std::string_view account) {
    return static_cast<std::uint32_t>(table.LineOf(group, account));
  }
  void ReadLine(std::string_view transaction, std::string_view line = "1", std::string_view quantity = {}) {
    source = {.number = ++number, .transactionId = transaction, .lineId = line, .quantity = quantity};
    booked.ReadLine(source);
  }
  void Book(AmountGroup group, std::string_view account, double amount, BookingRule rule,
            bool again = false) {
    booked.Book({.slot = {.group = group, .name = account, .number = 1, .pastPeriod = {}},
                 .rule = rule,
                 .amount = amount,
                 .line = &source,
                 .billedAgain = again});
  }
  void LeaveOut(SkipReason reason) { booked.LeftOut({.reason = reason, .line = number}); }
  // Posts an entry of the line that was read last.
  void Post(Group group, std::string_view account, double amount, PostedEntry kind = {.kindRead = true}) {
    kind.transaction = table.transactions.NumberOf(source.transactionId);
    kind.key = keys.NumberOf(kind.transaction, source.lineId);
    kind.line = LineOf(group, account);
    kind.amount = ExactAmount::From(amount);
    posted.entries.push_back(kind);
  }
  std::string Causes(Group group, std::string_view account) {
    return CausesOf(table.At(table.LineOf(group, account)).months[0]);
  }
  void Compare() { ExplainEntries(table, booked, posted); }

  WorkTable table;
  LineKeys keys;
  BookedEntries booked{table, keys};
  PostedEntries posted;
  SourceLine source;
  std::int64_t number = 0;
};

constexpr PostedEntry sale{.kindRead = true, .isSale = true};
constexpr PostedEntry costOfSale{.kindRead = true, .isSale = true, .isCost = true};

TEST_F(ComparingEntries, FindsNothingWhereBothAgree) {
  ReadLine("T-1");
  Book(AmountGroup::Expenses, "Rent", 10, BookingRule::ChargedToExpense);
  Post(Group::Expenses, "Rent", 10);
  Compare();
  EXPECT_EQ(Causes(Group::Expenses, "Rent"), "");
}

TEST_F(ComparingEntries, NamesAKindThatIsNotRead) {
  source = {.transactionId = "J-1", .lineId = "1"};
  Post(Group::Expenses, "Payroll", 2214.8, {.kindRead = false});
  Compare();
  EXPECT_EQ(Causes(Group::Expenses, "Payroll"), "kind-not-read -2214.80");
}

TEST_F(ComparingEntries, NamesAccountTypesThatAreNotTaken) {
  ReadLine("T-1");
  LeaveOut(SkipReason::AccountInNoList);
  Post(Group::CostOfGoods, "Purchases", 7);
  Post(Group::OtherExpense, "Interest", 3);
  Compare();
  EXPECT_EQ(Causes(Group::CostOfGoods, "Purchases"), "type-not-taken -7.00");
  EXPECT_EQ(Causes(Group::OtherExpense, "Interest"), "type-not-taken -3.00");
}

TEST_F(ComparingEntries, NamesPurchaseLinesOfItemGroups) {
  ReadLine("T-1");
  LeaveOut(SkipReason::InsideItemGroup);
  Post(Group::Expenses, "Pots", 5, {.kindRead = true, .inItemGroup = true});
  Compare();
  EXPECT_EQ(Causes(Group::Expenses, "Pots"), "item-group -5.00");
}

TEST_F(ComparingEntries, NamesItemsWithoutAccount) {
  ReadLine("T-1");
  LeaveOut(SkipReason::ItemWithoutAccount);
  Post(Group::Sales, "Discounts", -141.78, sale);
  Compare();
  EXPECT_EQ(Causes(Group::Sales, "Discounts"), "item-without-account 141.78");
}

TEST_F(ComparingEntries, NamesPendingSales) {
  ReadLine("T-1");
  Book(AmountGroup::Income, "Plants", 40, BookingRule::Sale);
  Book(AmountGroup::CostOfGoods, "Seeds", 7.5, BookingRule::CostOfSale);
  posted.pendingSales.insert(table.transactions.NumberOf("T-1"));
  Compare();
  EXPECT_EQ(Causes(Group::Sales, "Plants"), "pending-sale 40.00");
  EXPECT_EQ(Causes(Group::CostOfGoods, "Seeds"), "pending-sale 7.50");
}

TEST_F(ComparingEntries, NamesExpensesTakenBackOnceAndAgain) {
  ReadLine("T-1", "1");
  Book(AmountGroup::Expenses, "Jobs", -318, BookingRule::BilledExpenseTakenBack);
  ReadLine("T-1", "2");
  Book(AmountGroup::Expenses, "Jobs", -318, BookingRule::BilledExpenseTakenBack, true);
  Compare();
  EXPECT_EQ(Causes(Group::Expenses, "Jobs"), "billed-once -318.00; billed-again -318.00");
}

TEST_F(ComparingEntries, NamesAnotherAccountOnBothSides) {
  ReadLine("T-1");
  Book(AmountGroup::Income, "Plants", 40, BookingRule::Sale);
  Post(Group::Sales, "Tools", 40, sale);
  Compare();
  EXPECT_EQ(Causes(Group::Sales, "Plants"), "other-account 40.00");
  EXPECT_EQ(Causes(Group::Sales, "Tools"), "other-account -40.00");
}

TEST_F(ComparingEntries, NamesCostsAtTodaysAverage) {
  ReadLine("T-1");
  Book(AmountGroup::CostOfGoods, "Seeds", 2.415, BookingRule::CostOfSale);
  Post(Group::CostOfGoods, "Seeds", 2.42, costOfSale);
  Compare();
  EXPECT_EQ(Causes(Group::CostOfGoods, "Seeds"), "average-cost -0.005");
}

TEST_F(ComparingEntries, NamesQuantitiesThatCountAsOne) {
  ReadLine("T-1", "1", "two");
  Book(AmountGroup::CostOfGoods, "Seeds", 2.5, BookingRule::CostOfSale);
  Post(Group::CostOfGoods, "Seeds", 5, costOfSale);
  Compare();
  EXPECT_EQ(Causes(Group::CostOfGoods, "Seeds"), "quantity-as-one -2.50");
}

TEST_F(ComparingEntries, NamesAverageCostsThatWereCut) {
  ReadLine("T-1");
  booked.CutCost();
  Book(AmountGroup::CostOfGoods, "Seeds", 1, BookingRule::CostOfSale);
  Post(Group::CostOfGoods, "Seeds", 1234.56, costOfSale);
  Compare();
  EXPECT_EQ(Causes(Group::CostOfGoods, "Seeds"), "text-cut -1233.56");
}

TEST_F(ComparingEntries, NamesCostsOfSalesWithoutAmount) {
  ReadLine("T-1");
  Post(Group::CostOfGoods, "Seeds", 2.5, costOfSale);
  Compare();
  EXPECT_EQ(Causes(Group::CostOfGoods, "Seeds"), "without-amount -2.50");
}

TEST_F(ComparingEntries, DoesNotTakeASaleThatIsNotPostedForPending) {
  ReadLine("T-1");
  Book(AmountGroup::Income, "Plants", 40, BookingRule::Sale);
  Compare();
  EXPECT_EQ(Causes(Group::Sales, "Plants"), "");
}

TEST_F(ComparingEntries, LeavesWhatHasNoCauseUnexplained) {
  source = {.transactionId = "T-9", .lineId = "1"};
  Post(Group::Expenses, "Rent", 10);
  Compare();
  EXPECT_EQ(Causes(Group::Expenses, "Rent"), "");
}

TEST_F(ComparingEntries, PairsLinesWithoutIdsByTheirAmounts) {
  ReadLine("T-1", "");
  Book(AmountGroup::Expenses, "Rent", 10, BookingRule::ChargedToExpense);
  ReadLine("T-1", "");
  Book(AmountGroup::Expenses, "Rent", 20, BookingRule::ChargedToExpense);
  Post(Group::Expenses, "Rent", 20);
  Post(Group::Expenses, "Rent", 10);
  Compare();
  EXPECT_EQ(Causes(Group::Expenses, "Rent"), "");
}

TEST_F(ComparingEntries, PairsLinesThatArePostedInAnotherOrder) {
  const std::array<std::string_view, 3> transactions = {"T-1", "T-2", "T-3"};
  for (const std::string_view transaction : transactions) {
    for (const std::string_view line : {"1", "2"}) {
      ReadLine(transaction, line);
      Book(AmountGroup::Expenses, "Rent", static_cast<double>(number), BookingRule::ChargedToExpense);
    }
  }
  source = {.transactionId = "T-4", .lineId = "1"};
  Post(Group::Expenses, "Rent", 7, {.kindRead = false});
  for (const std::size_t transaction : {2U, 0U, 1U}) {
    for (const std::size_t line : {1U, 2U}) {
      const std::string id = std::to_string(line);
      source = {.transactionId = transactions.at(transaction), .lineId = id};
      Post(Group::Expenses, "Rent", static_cast<double>(2 * transaction + line));
    }
  }
  source = {.transactionId = "T-0", .lineId = "1"};
  Post(Group::Expenses, "Rent", 8, {.kindRead = false});
  Compare();
  EXPECT_EQ(Causes(Group::Expenses, "Rent"), "kind-not-read -15.00");
  const CauseSums& causes = table.At(LineOf(Group::Expenses, "Rent")).months[0].causes;
  EXPECT_EQ(
      causes.at({CauseCode::KindNotRead, ""}).transactions,
      (std::vector<std::uint32_t>{table.transactions.NumberOf("T-4"), table.transactions.NumberOf("T-0")}));
}

TEST_F(ComparingEntries, OfReportsNamesOnlyTheOtherSections) {
  booked.Book({.slot = {.group = AmountGroup::Expenses, .name = "Rent", .number = 1, .pastPeriod = {}},
               .rule = BookingRule::ReportCell,
               .amount = 10});
  source = {.transactionId = "T-1", .lineId = "1"};
  Post(Group::Expenses, "Rent", 10);
  Post(Group::OtherIncome, "Interest", 3);
  Compare();
  EXPECT_EQ(Causes(Group::Expenses, "Rent"), "");
  EXPECT_EQ(Causes(Group::OtherIncome, "Interest"), "type-not-taken -3.00");
}

}  // namespace
}  // namespace krnqb::reconcile
