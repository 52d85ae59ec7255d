#include "cli/console/streams.h"

#include <gtest/gtest.h>

#include <sstream>

#include "cli/console/failure.h"

namespace krnqb::cli {
namespace {

TEST(FailureLine, SaysWhatFailedWhyAndWhatToDo) {
  const Failure failure(ExitCode::Failed, "opening failed", Error(53, "There is no file x"),
                        "check the path");
  EXPECT_EQ(failure.Line(), "krnqb: opening failed: There is no file x; check the path");
  EXPECT_EQ(failure.Number(), 53);
  EXPECT_EQ(failure.Description(), "There is no file x");
}

TEST(FailureLine, LeavesOutTheFullStopOfASentence) {
  const Failure failure(ExitCode::Failed, "opening failed", Error(53, "There is no file."), "check the path");
  EXPECT_EQ(failure.Line(), "krnqb: opening failed: There is no file; check the path");
}

TEST(FailureLine, KeepsAnEllipsis) {
  const Failure failure(ExitCode::Failed, "waiting failed", Error(53, "Still waiting..."), "go on");
  EXPECT_EQ(failure.Line(), "krnqb: waiting failed: Still waiting...; go on");
}

TEST(FailureLine, IsTheErrorsOwnTextWhereThatSaysItAll) {
  const Failure failure(ExitCode::Failed, Error(53, "cannot open x: no such file; check the path"));
  EXPECT_EQ(failure.Line(), "krnqb: cannot open x: no such file; check the path");
}

TEST(WrongUsage, EndsWithTwo) {
  EXPECT_EQ(static_cast<int>(WrongUsage("no file is named", "name one").Code()), 2);
  EXPECT_EQ(WrongUsage("no file is named", "name one").Line(),
            "krnqb: wrong usage: no file is named; name one");
}

TEST(Console, PrintsAMessageOnOneLineWhateverItQuotes) {
  std::ostringstream out;
  std::ostringstream err;
  PrintError({out, err}, "refused: <a>\r\n<b> \x1b[31m\tend");
  EXPECT_EQ(err.str(), "refused: <a> <b>  [31m end\n");
  EXPECT_EQ(out.str(), "");
}

TEST(Console, MarksAWarning) {
  std::ostringstream out;
  std::ostringstream err;
  Warn({out, err}, "--x has no effect");
  EXPECT_EQ(err.str(), "krnqb: warning: --x has no effect\n");
}

}  // namespace
}  // namespace krnqb::cli
