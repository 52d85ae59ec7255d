#include "reconcile/booked_entries.h"

#include <gtest/gtest.h>

#include "reconcile/amounts.h"

namespace krnqb::reconcile {
namespace {

class CollectingBookings : public testing::Test {
 protected:
  static AmountSlot Slot(std::string_view name, std::int16_t month,
                         AmountGroup group = AmountGroup::Expenses) {
    return {.group = group, .name = name, .number = month, .pastPeriod = {}};
  }
  void Spread(std::string_view account, std::int16_t month, double amount) {
    booked.Book({.slot = Slot(account, month),
                 .rule = BookingRule::SpreadBalance,
                 .amount = amount,
                 .replaces = true});
  }
  void Report(std::string_view account, std::int16_t month, double amount, std::string_view text = "0") {
    booked.Book(
        {.slot = Slot(account, month), .rule = BookingRule::ReportCell, .amount = amount, .text = text});
  }
  void Line(std::string_view transaction, std::string_view quantity = {}) {
    line = {.number = ++number, .transactionId = transaction, .lineId = "1", .quantity = quantity};
    booked.ReadLine(line);
  }
  void Charge(std::string_view account, std::int16_t month, double amount) {
    booked.Book({.slot = Slot(account, month), .amount = amount, .line = &line});
  }
  void Sell(std::string_view account, BookingRule rule) {
    booked.Book(
        {.slot = Slot(account, 1, AmountGroup::CostOfGoods), .rule = rule, .amount = 1, .line = &line});
  }
  const MonthAmounts& Month(std::string_view account, std::size_t month) {
    return table.At(table.LineOf(Group::Expenses, account)).months.at(month - 1);
  }

  WorkTable table;
  LineKeys keys;
  BookedEntries booked{table, keys};
  SourceLine line;
  std::int64_t number = 0;
};

TEST_F(CollectingBookings, AddsThemUpByAccountAndMonth) {
  Line("T-1");
  Charge("Rent", 3, 0.1);
  Charge("RENT", 3, 0.2);
  Charge("Fuel", 3, -7);
  EXPECT_EQ(Month("Rent", 3).booked.PlainText(), "0.30");
  EXPECT_EQ(Month("Fuel", 3).booked, Units(-7));
  EXPECT_EQ(Month("Rent", 4).booked, Units(0));
  EXPECT_EQ(booked.Entries().size(), 3U);
  EXPECT_FALSE(booked.FromReports());
}

TEST_F(CollectingBookings, TakesASpreadBalanceForWhatItAddsToTheTransactions) {
  Line("T-1");
  Charge("Rent", 2, 5);
  Spread("Rent", 2, 100);
  EXPECT_EQ(Month("Rent", 2).booked, Units(100));
  EXPECT_EQ(CausesOf(Month("Rent", 2)), "spread-balance 95.00");
}

TEST_F(CollectingBookings, TakesTheLastReportRowOfAnAccountForItsSubtotal) {
  Report("Rent", 1, 30);
  Report("Rent", 1, 90);
  Report("Rent", 2, 7);
  EXPECT_EQ(Month("Rent", 1).booked, Units(120));
  EXPECT_EQ(CausesOf(Month("Rent", 1)), "report-row-twice 30.00");
  EXPECT_EQ(CausesOf(Month("Rent", 2)), "");
  EXPECT_TRUE(booked.FromReports());
}

TEST_F(CollectingBookings, NamesAmountsOfReportsThatWereCut) {
  Report("Rent", 1, 1, "1,234.50");
  Report("Fuel", 1, 1, "1,234.50");
  Report("Fuel", 1, 2, "2,000");
  EXPECT_EQ(CausesOf(Month("Rent", 1)), "text-cut -1233.50");
  EXPECT_EQ(CausesOf(Month("Fuel", 1)), "report-row-twice 1.00; text-cut -1998.00");
}

TEST_F(CollectingBookings, LeavesPastPerformanceOut) {
  AmountSlot past = Slot("Rent", 1);
  past.pastPeriod = 2;
  booked.Book({.slot = past, .amount = 9});
  booked.Book({.slot = Slot("Income", 1, AmountGroup::PastPerformance), .amount = 9});
  EXPECT_TRUE(table.Lines().empty());
}

TEST_F(CollectingBookings, MarksACostWhoseQuantityIsNotANumber) {
  Line("T-1", "two");
  Sell("Seeds", BookingRule::CostOfSale);
  Sell("Seeds", BookingRule::Sale);
  Line("T-2", "2");
  Sell("Seeds", BookingRule::CostOfSale);
  Line("T-3");
  Sell("Seeds", BookingRule::CostOfSale);
  EXPECT_TRUE(booked.Entries()[0].quantityAsOne);
  EXPECT_FALSE(booked.Entries()[1].quantityAsOne);
  EXPECT_FALSE(booked.Entries()[2].quantityAsOne);
  EXPECT_FALSE(booked.Entries()[3].quantityAsOne);
}

TEST_F(CollectingBookings, KeepsTheFirstReasonForWhichALineIsLeftOut) {
  Line("T-1");
  booked.LeftOut({.reason = SkipReason::ItemWithoutAccount, .line = 1});
  booked.LeftOut({.reason = SkipReason::DuplicateBillableKey, .line = 1});
  EXPECT_EQ(booked.ReasonOf(0), SkipReason::ItemWithoutAccount);
  EXPECT_TRUE(booked.HasRead(0));
  EXPECT_FALSE(booked.HasRead(1));
  EXPECT_EQ(booked.ReasonOf(1), std::nullopt);
}

TEST_F(CollectingBookings, KnowsTheRowsThatAreWritten) {
  const std::array terms{CellTerm{.slot = Slot("Rent", 1)}};
  const std::array sums{CellTerm{.slot = Slot("Deprec", 1)}, CellTerm{.slot = Slot("preciation", 1)}};
  booked.WriteCell({.content = CellContent::GrowthFormula, .row = "RENT", .number = 1, .terms = terms});
  booked.WriteCell({.content = CellContent::GrowthFormula, .row = "RENT", .number = 2, .terms = terms});
  booked.WriteCell({.content = CellContent::Amount, .row = "RENT", .number = 1, .terms = terms});
  booked.WriteCell(
      {.content = CellContent::GrowthFormula, .row = "Depreciation", .number = 1, .terms = sums});
  ASSERT_EQ(booked.Rows().size(), 2U);
  EXPECT_TRUE(booked.Rows()[0].IsAccountRow());
  EXPECT_FALSE(booked.Rows()[1].IsAccountRow());
}

TEST_F(CollectingBookings, ReportsAnAmountThatIsOutOfRange) {
  Line("T-1");
  Charge("Rent", 1, 1e200);
  EXPECT_THROW(booked.RequireComplete(), Error);
}

}  // namespace
}  // namespace krnqb::reconcile
