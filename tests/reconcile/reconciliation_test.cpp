#include "reconcile/reconciliation.h"

#include <gtest/gtest.h>

#include "reconcile/amounts.h"

namespace krnqb::reconcile {
namespace {

constexpr YearMonth start{.year = 2002, .month = 1};

MonthAmounts& January(WorkTable& table, Group group, std::string_view account) {
  return table.At(table.LineOf(group, account)).months[0];
}

void Set(MonthAmounts& month, std::int64_t plan, std::int64_t books) {
  month.plan = month.written = month.booked = Units(plan);
  month.books = Units(books);
}

TEST(Reconciliation, AddsUpLinesGroupsAndTheWhole) {
  WorkTable table;
  Set(January(table, Group::Sales, "Plants"), 100, 90);
  January(table, Group::Sales, "Plants").Explain(CauseCode::PendingSale, Units(10), {0});
  table.transactions.NumberOf("T-1");
  Set(January(table, Group::Expenses, "Rent"), 40, 30);
  January(table, Group::Expenses, "Rent").Explain(CauseCode::RowTwice, Units(10));
  Set(January(table, Group::Expenses, "Fuel"), 0, 0);
  const Reconciliation result = Summarize(table, start, BooksPeriods::Months, LinePeriods::Years);
  ASSERT_EQ(result.lines.size(), 2U) << "an account without amounts is left out";
  EXPECT_EQ(result.lines[0].difference, Units(10));
  ASSERT_EQ(result.lines[0].causes.size(), 1U);
  EXPECT_EQ(result.lines[0].causes[0].transactions, std::vector<std::string>{"T-1"});
  EXPECT_EQ(result.lines[0].unexplained, Units(0));
  ASSERT_EQ(result.totals.size(), 2U);
  EXPECT_EQ(result.totals[1].plan, Units(40));
  EXPECT_EQ(result.whole.plan, Units(60));
  EXPECT_EQ(result.whole.books, Units(60));
  EXPECT_EQ(result.whole.difference, Units(0)) << "differences that cancel out";
  ASSERT_EQ(result.whole.causes.size(), 2U);
  EXPECT_EQ(result.whole.causes[0].amount, Units(-10));
  EXPECT_EQ(result.whole.causes[1].amount, Units(10));
  EXPECT_FALSE(Agrees(result, Units(9)));
  EXPECT_TRUE(Agrees(result, Units(10)));
}

TEST(Reconciliation, KeepsAnAccountWhoseMonthsAddUpToZero) {
  WorkTable table;
  const std::size_t line = table.LineOf(Group::Expenses, "Job Expenses");
  Set(table.At(line).months[3], -98, -98);
  Set(table.At(line).months[6], 98, 98);
  const Reconciliation months = Summarize(table, start, BooksPeriods::Months, LinePeriods::Months);
  ASSERT_EQ(months.lines.size(), 2U);
  EXPECT_EQ(months.lines[0].month, 4);
  EXPECT_EQ(months.lines[1].plan, Units(98));
  const Reconciliation years = Summarize(table, start, BooksPeriods::Months, LinePeriods::Years);
  ASSERT_EQ(years.lines.size(), 1U);
  EXPECT_EQ(years.lines[0].plan, Units(0));
  EXPECT_EQ(years.totals.size(), 1U);
}

TEST(Reconciliation, ShowsWhatHasNoCause) {
  WorkTable table;
  Set(January(table, Group::Sales, "Plants"), 100, 90);
  January(table, Group::Sales, "Plants").Explain(CauseCode::PendingSale, Units(4));
  const Reconciliation result = Summarize(table, start, BooksPeriods::Months, LinePeriods::Years);
  EXPECT_EQ(result.lines[0].unexplained, Units(6));
  EXPECT_EQ(result.whole.unexplained, Units(6));
}

TEST(Reconciliation, CallsLessThanHalfACentRounding) {
  WorkTable table;
  Set(January(table, Group::Sales, "Plants"), 100, 100);
  January(table, Group::Sales, "Plants").plan += ExactAmount::FromMillionths(4'999);
  const Reconciliation rounded = Summarize(table, start, BooksPeriods::Months, LinePeriods::Years);
  ASSERT_EQ(rounded.lines[0].causes.size(), 1U);
  EXPECT_EQ(rounded.lines[0].causes[0].code, CauseCode::Rounding);
  EXPECT_TRUE(rounded.lines[0].unexplained.IsZero());
  January(table, Group::Sales, "Plants").plan += ExactAmount::FromMillionths(1);
  const Reconciliation more = Summarize(table, start, BooksPeriods::Months, LinePeriods::Years);
  EXPECT_EQ(more.lines[0].unexplained, ExactAmount::FromMillionths(5'000));
}

TEST(Reconciliation, HasALineForEachMonthWithAmounts) {
  WorkTable table;
  const std::size_t line = table.LineOf(Group::Sales, "Plants");
  Set(table.At(line).months[0], 100, 100);
  Set(table.At(line).months[11], 7, 7);
  const Reconciliation result = Summarize(table, start, BooksPeriods::Months, LinePeriods::Months);
  ASSERT_EQ(result.lines.size(), 2U);
  EXPECT_EQ(result.lines[0].month, 1);
  EXPECT_EQ(result.lines[1].month, 12);
  EXPECT_EQ(result.totals[0].plan, Units(107));
}

TEST(Reconciliation, HasNoBooksOfMonthsIfOnlyThoseOfTheYearAreKnown) {
  WorkTable table;
  Set(January(table, Group::Sales, "Plants"), 100, 100);
  const Reconciliation result = Summarize(table, start, BooksPeriods::Year, LinePeriods::Months);
  EXPECT_EQ(result.lines[0].books, std::nullopt);
  EXPECT_EQ(result.totals[0].books, Units(100));
}

TEST(Reconciliation, WithoutBooksComparesWithTheBookings) {
  WorkTable table;
  Set(January(table, Group::Expenses, "Rent"), 40, 0);
  January(table, Group::Expenses, "Rent").booked = Units(30);
  January(table, Group::Expenses, "Rent").Explain(CauseCode::RowTwice, Units(10));
  January(table, Group::Expenses, "Rent").Explain(CauseCode::SpreadBalance, Units(30));
  January(table, Group::Expenses, "Payroll").Explain(CauseCode::KindNotRead, Units(-5));
  const Reconciliation result = Summarize(table, start, std::nullopt, LinePeriods::Years);
  ASSERT_EQ(result.lines.size(), 1U);
  EXPECT_EQ(result.lines[0].books, std::nullopt);
  EXPECT_EQ(result.lines[0].difference, Units(10));
  ASSERT_EQ(result.lines[0].causes.size(), 1U);
  EXPECT_EQ(result.lines[0].causes[0].code, CauseCode::RowTwice);
  EXPECT_TRUE(result.lines[0].unexplained.IsZero());
}

}  // namespace
}  // namespace krnqb::reconcile
