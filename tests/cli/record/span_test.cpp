#include "cli/record/span.h"

#include <gtest/gtest.h>

#include "cli/console/failure.h"

namespace krnqb::cli {
namespace {

using Months = std::vector<YearMonth>;

RecordOptions Options(std::optional<YearMonth> from, std::optional<YearMonth> to) {
  RecordOptions options;
  options.planStart = {2003, 1};
  options.from = from;
  options.to = to;
  return options;
}

std::string FaultOf(std::optional<YearMonth> from, std::optional<YearMonth> to) {
  try {
    SettleSpan(Options(from, to));
  } catch (const Failure& failure) {
    EXPECT_EQ(failure.Code(), ExitCode::WrongUsage);
    return failure.Line();
  }
  return "none";
}

TEST(SettleSpan, TakesTheTwelveMonthsBeforeThePlan) {
  EXPECT_EQ(SettleSpan(Options({}, {})), (RecordedSpan{{2002, 1}, {2002, 12}, {2003, 1}}));
  RecordOptions inSummer = Options({}, {});
  inSummer.planStart = {2003, 7};
  EXPECT_EQ(SettleSpan(inSummer), (RecordedSpan{{2002, 7}, {2003, 6}, {2003, 7}}));
}

TEST(SettleSpan, TakesMoreMonthsThatIncludeThem) {
  EXPECT_EQ(SettleSpan(Options(YearMonth{2000, 7}, {})), (RecordedSpan{{2000, 7}, {2002, 12}, {2003, 1}}));
  EXPECT_EQ(SettleSpan(Options(YearMonth{2002, 1}, YearMonth{2003, 3})),
            (RecordedSpan{{2002, 1}, {2003, 3}, {2003, 1}}));
  EXPECT_EQ(FaultOf(YearMonth{1993, 1}, {}), "none");
}

TEST(SettleSpan, RefusesWhatContradictsThePlan) {
  constexpr auto begin = "krnqb: wrong usage: ";
  EXPECT_EQ(FaultOf(YearMonth{2002, 2}, YearMonth{2003, 1}),
            std::string(begin) +
                "an import into a plan that starts in January 2003 reads January 2002 to December 2002, but "
                "--from and --to are February 2002 to January 2003; include these months, or give another "
                "--plan-start");
  EXPECT_EQ(FaultOf(YearMonth{2001, 1}, YearMonth{2002, 11}).substr(0, 62),
            std::string(begin) + "an import into a plan that starts in Janua");
  EXPECT_EQ(FaultOf(YearMonth{2002, 1}, YearMonth{2002, 11}),
            std::string(begin) +
                "January 2002 to November 2002 are fewer than the twelve months that an import reads; give "
                "twelve months or more with --from and --to");
  EXPECT_EQ(FaultOf(YearMonth{2002, 5}, YearMonth{2002, 4}),
            std::string(begin) +
                "--to 2002-04 is before --from 2002-05; give twelve months or more with --from and --to");
  EXPECT_EQ(FaultOf(YearMonth{1992, 12}, {}),
            std::string(begin) +
                "December 1992 to December 2002 are 121 months; 120 can be recorded at once; record them in "
                "several recordings");
}

TEST(ImportStarts, AreAllFirstMonthsOfTwelve) {
  EXPECT_EQ(ImportStarts({{2002, 1}, {2002, 12}, {2003, 1}}), (Months{{2002, 1}}));
  EXPECT_EQ(ImportStarts({{2001, 11}, {2002, 12}, {2003, 1}}), (Months{{2001, 11}, {2001, 12}, {2002, 1}}));
}

TEST(TransactionStarts, CoverEveryMonthAndEveryYearOfAStart) {
  EXPECT_EQ(TransactionStarts({{2002, 1}, {2002, 12}, {2003, 1}}), (Months{{2002, 1}}));
  EXPECT_EQ(TransactionStarts({{2001, 11}, {2002, 12}, {2003, 1}}), (Months{{2001, 11}, {2002, 1}}));
  EXPECT_EQ(TransactionStarts({{2000, 1}, {2002, 12}, {2003, 1}}), (Months{{2000, 1}, {2001, 1}, {2002, 1}}));
}

}  // namespace
}  // namespace krnqb::cli
