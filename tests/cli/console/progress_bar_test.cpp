#include "cli/console/progress_bar.h"

#include <gtest/gtest.h>

#include <sstream>

namespace krnqb::cli {
namespace {

struct Terminal {
  std::ostringstream text;
  std::size_t width = 60;
  ProgressBar bar{text, [this] { return width; }};

  // Returns what was drawn since the last call.
  std::string Drawn() {
    std::string drawn = text.str();
    text.str("");
    return drawn;
  }
};

TEST(ProgressBar, FillsUpAndIsErased) {
  Terminal terminal;
  terminal.bar.Show(50, "Reading accounts");
  EXPECT_EQ(terminal.Drawn(), "\r[#########.........]  50% Reading accounts");
  terminal.bar.Show(100, "Done");
  EXPECT_EQ(terminal.Drawn(), "\r[##################] 100% Done            ");
  terminal.bar.Wipe();
  EXPECT_EQ(terminal.Drawn(), "\r" + std::string(30, ' ') + "\r");
  terminal.bar.Wipe();
  EXPECT_EQ(terminal.Drawn(), "");
}

TEST(ProgressBar, PrintsNothingIfNeverDrawn) {
  std::ostringstream terminal;
  { const ProgressBar bar(terminal, {}); }
  EXPECT_EQ(terminal.str(), "");
}

TEST(ProgressBar, ShowsTheRemarkIfThereIsRoomForAllOfIt) {
  Terminal terminal;
  terminal.bar.Show(0, "Reading accounts", "about 5 s left");
  EXPECT_EQ(terminal.Drawn(), "\r[..................]   0% Reading accounts, about 5 s left");
  terminal.bar.Wipe();
  terminal.Drawn();
  terminal.bar.Show(0, "Reading accounts", "about 55 min left");
  EXPECT_EQ(terminal.Drawn(), "\r[..................]   0% Reading accounts");
}

TEST(ProgressBar, IsAsWideAsTheTerminalAllowsAndNeverWider) {
  for (std::size_t width = 20; width <= 200; ++width) {
    Terminal terminal;
    terminal.width = width;
    terminal.bar.Show(42, std::string(100, 'x'));
    const std::string drawn = terminal.Drawn();
    // "\r", and "…" takes three bytes and one column
    const bool shortened = drawn.find("…") != std::string::npos;
    EXPECT_LE(drawn.size() - 1 - (shortened ? 2 : 0), width - 1) << drawn;
    EXPECT_GE(drawn.find(']'), 11U) << drawn;
    if (width >= 80) {
      EXPECT_EQ(drawn.size() - 1 - 2, width - 1) << drawn;
    }
  }
}

TEST(ProgressBar, IsNotShownBelowTwentyColumns) {
  Terminal terminal;
  terminal.width = 19;
  terminal.bar.Show(50, "Reading");
  EXPECT_EQ(terminal.Drawn(), "");
  terminal.width = 20;
  terminal.bar.Show(50, "Reading");
  EXPECT_EQ(terminal.Drawn(), "\r[#####.....]  50%");
  terminal.width = 19;
  terminal.bar.Show(60, "Reading");
  EXPECT_EQ(terminal.Drawn(), "\r" + std::string(17, ' ') + "\r");
}

TEST(ProgressBar, FollowsATerminalThatChangesItsWidth) {
  Terminal terminal;
  terminal.bar.Show(50, "Reading accounts");
  terminal.Drawn();
  terminal.width = 30;
  terminal.bar.Show(50, "Reading accounts");
  const std::string narrow = terminal.Drawn();
  EXPECT_EQ(narrow, "\r[#####.....]  50% Reading ac…");
  terminal.bar.Wipe();
  EXPECT_EQ(terminal.Drawn(), "\r" + std::string(29, ' ') + "\r");
  terminal.width = 60;
  terminal.bar.Show(50, "Reading accounts");
  terminal.Drawn();
  terminal.width = 25;
  terminal.bar.Wipe();
  EXPECT_EQ(terminal.Drawn(), "\r" + std::string(24, ' ') + "\r") << "longer blanks would go on below";
}

TEST(ProgressBar, ClampsThePercentage) {
  Terminal terminal;
  terminal.width = 20;
  terminal.bar.Show(250, "");
  terminal.bar.Show(-10, "");
  EXPECT_EQ(terminal.Drawn(), "\r[##########] 100%\r[..........]   0%");
}

}  // namespace
}  // namespace krnqb::cli
