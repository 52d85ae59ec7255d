#include "cli/console/progress_bar.h"

#include <gtest/gtest.h>

#include <sstream>

namespace krnqb::cli {
namespace {

TEST(ProgressBar, FillsUpAndIsErased) {
  std::ostringstream terminal;
  {
    ProgressBar bar(terminal);
    bar.Show(20, "Reading");
    EXPECT_EQ(terminal.str(), "\r[#####....................]  20% Reading");
    terminal.str("");
    bar.Show(100, "Done");
    EXPECT_EQ(terminal.str(), "\r[#########################] 100% Done   ");
    terminal.str("");
  }
  EXPECT_EQ(terminal.str(), "\r" + std::string(37, ' ') + "\r");
}

TEST(ProgressBar, PrintsNothingIfNeverDrawn) {
  std::ostringstream terminal;
  { const ProgressBar bar(terminal); }
  EXPECT_EQ(terminal.str(), "");
}

TEST(ProgressBar, ClampsTheBarToItsWidth) {
  std::ostringstream terminal;
  ProgressBar bar(terminal);
  bar.Show(0, "");
  bar.Show(250, "");
  bar.Show(-10, "");
  EXPECT_EQ(terminal.str(),
            "\r[.........................]   0% "
            "\r[#########################] 250% "
            "\r[.........................] -10% ");
}

}  // namespace
}  // namespace krnqb::cli
