#include "cli/explain/words.h"

#include <gtest/gtest.h>

namespace krnqb::cli {
namespace {

TEST(ExplainWords, SayHowAnAmountWasComputed) {
  const auto text = [](const ledger::LedgerBooking& booking) { return AmountAsRead(booking); };
  EXPECT_EQ(text({.rule = BookingRule::ChargedToExpense, .text = "1,200.00"}), "1,200.00");
  EXPECT_EQ(text({.rule = BookingRule::CostOfSale, .text = "9", .quantity = 3, .averageCost = 2.5}),
            "3 x 2.50");
  EXPECT_EQ(text({.rule = BookingRule::CostOfSale, .text = "9", .quantity = 0.5, .averageCost = 3.375}),
            "0.5 x 3.375");
  EXPECT_EQ(text({.rule = BookingRule::SpreadBalance, .amount = 1000, .text = "12000.00"}),
            "12,000.00 / 12 months");
  EXPECT_EQ(text({.rule = BookingRule::SpreadBalance, .amount = -500, .text = "-500.00"}),
            "-500.00 / 1 month");
}

TEST(ExplainWords, ShowAllDigitsOfAnAmount) {
  EXPECT_EQ(ExactMoneyText(1234.5), "1,234.50");
  EXPECT_EQ(ExactMoneyText(16.875), "16.875");
  EXPECT_EQ(ExactMoneyText(0), "0.00");
}

TEST(ExplainWords, NameTheMonthOfAFigure) {
  ledger::LedgerFacts facts;
  facts.periodFrom = "2001-07";
  facts.planStart = "2003-01";
  facts.product = "ald";
  EXPECT_EQ(PeriodText(facts, false, 1), "July 2001");
  EXPECT_EQ(PeriodText(facts, false, 12), "June 2002");
  EXPECT_EQ(PeriodText(facts, true, 1), "2000");
  EXPECT_EQ(PeriodText(facts, true, 3), "2002");
  EXPECT_EQ(MonthOfFigure(facts, true, 3), std::nullopt);
  facts.product = "cor";
  EXPECT_EQ(PeriodText(facts, true, 2), "2001");
  EXPECT_EQ(PeriodText(facts, true, 3), "January 2002");
  EXPECT_EQ(PeriodText(facts, true, 14), "December 2002");
  facts.periodFrom = "";
  EXPECT_EQ(PeriodText(facts, false, 2), "month 2");
}

TEST(ExplainWords, WrapNamesUnderTheFirst) {
  EXPECT_EQ(HangingNames("  ", "in ", {"one", "two", "three"}, 14), "  in one, two,\n     three\n");
  EXPECT_EQ(HangingNames("  ", "in ", {"a name that is too long", "b"}, 10),
            "  in a name that is too long,\n     b\n");
}

}  // namespace
}  // namespace krnqb::cli
