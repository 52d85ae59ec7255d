#include "cli/import/progress/display.h"

#include <gtest/gtest.h>

#include <sstream>

namespace krnqb::cli {
namespace {

using std::chrono::milliseconds;
using namespace std::chrono_literals;

TEST(TimeLeft, IsRoundedUpAsPeopleSayIt) {
  EXPECT_EQ(TimeLeftText(900ms), "about 1 s left");
  EXPECT_EQ(TimeLeftText(10s), "about 10 s left");
  EXPECT_EQ(TimeLeftText(10'001ms), "about 15 s left");
  EXPECT_EQ(TimeLeftText(55s), "about 55 s left");
  EXPECT_EQ(TimeLeftText(56s), "about 1 min left");
  EXPECT_EQ(TimeLeftText(61s), "about 2 min left");
  EXPECT_EQ(TimeLeftText(59min), "about 59 min left");
  EXPECT_EQ(TimeLeftText(60min), "about 1 h 0 min left");
  EXPECT_EQ(TimeLeftText(125min), "about 2 h 5 min left");
}

// An import of expense amounts on a terminal of 100 columns, with a clock that the test moves.
struct Display {
  std::ostringstream terminal;
  ProgressBar bar{terminal, [] { return 100; }};
  milliseconds now{5000};
  ProgressDisplay display{bar,
                          {.expenses = true,
                           .balances = BalImport_All,
                           .majorVersion = 1,
                           .planStart = {2003, 1},
                           .importStart = {2002, 1}},
                          [this] { return now; }};

  std::string Show(std::int16_t percent, std::string_view description) {
    terminal.str("");
    display.Show(percent, description);
    return terminal.str();
  }

  // Returns the line at the third month of expenses, after `elapsed`.
  std::string ThirdMonthAfter(milliseconds elapsed) {
    for (int pass = 0; pass < 2; ++pass) {
      for (std::int16_t percent = 20; percent <= 100; percent = static_cast<std::int16_t>(percent + 20)) {
        Show(percent, "Processing...");
      }
    }
    now += elapsed;
    return Show(25, "Importing expense balances...");
  }
};

// Before the third month 28 of 160 parts of the work are done.
TEST(ProgressDisplay, ShowsPhaseAndTimeLeft) {
  EXPECT_NE(Display().ThirdMonthAfter(14s).find(" 17% reading expenses, March 2002, about 2 min left"),
            std::string::npos);
  EXPECT_NE(Display().ThirdMonthAfter(5s).find(" 17% reading expenses, March 2002, about 25 s left"),
            std::string::npos);
}

TEST(ProgressDisplay, HidesATimeLeftThatMeansNothingYet) {
  const std::string early = Display().ThirdMonthAfter(2999ms);
  EXPECT_NE(early.find(" 17% reading expenses, March 2002"), std::string::npos) << early;
  EXPECT_EQ(early.find("left"), std::string::npos) << early;
  Display slowStart;
  slowStart.now += 20s;
  const std::string first = slowStart.Show(40, "Processing...");
  EXPECT_EQ(first.find("left"), std::string::npos) << first;
}

TEST(ProgressDisplay, EndsAtAHundredPercent) {
  Display shown;
  shown.ThirdMonthAfter(14s);
  shown.terminal.str("");
  shown.display.ShowEnd();
  EXPECT_NE(shown.terminal.str().find("] 100% writing the plan"), std::string::npos);
  EXPECT_EQ(shown.terminal.str().find("left"), std::string::npos);
}

}  // namespace
}  // namespace krnqb::cli
