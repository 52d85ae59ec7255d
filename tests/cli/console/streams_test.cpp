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

TEST(FailureLine, RemovesTheFullStopOfASentence) {
  const Failure failure(ExitCode::Failed, "opening failed", Error(53, "There is no file."), "check the path");
  EXPECT_EQ(failure.Line(), "krnqb: opening failed: There is no file; check the path");
}

TEST(FailureLine, KeepsAnEllipsis) {
  const Failure failure(ExitCode::Failed, "waiting failed", Error(53, "Still waiting..."), "go on");
  EXPECT_EQ(failure.Line(), "krnqb: waiting failed: Still waiting...; go on");
}

TEST(FailureLine, IsTheErrorsDescriptionIfThatSaysItAll) {
  const Failure failure(ExitCode::Failed, Error(53, "cannot open x: no such file; check the path"));
  EXPECT_EQ(failure.Line(), "krnqb: cannot open x: no such file; check the path");
}

TEST(FailureRemedy, IsTheLastPartOfTheLine) {
  const auto remedy = [](std::string_view description) {
    return Failure(ExitCode::Failed, Error(53, std::string(description))).Remedy();
  };
  EXPECT_EQ(CommandFailure("opening failed", "there is no file x; y", "check the path; nothing was written")
                .Remedy(),
            "check the path; nothing was written");
  EXPECT_EQ(remedy("cannot open a; b: no such file; check the path"), "check the path");
  EXPECT_EQ(remedy("there is no advice"), "");
}

TEST(WrongUsage, HasExitCodeTwo) {
  EXPECT_EQ(static_cast<int>(WrongUsage("no file is given", "give one").Code()), 2);
  EXPECT_EQ(WrongUsage("no file is given", "give one").Line(),
            "krnqb: wrong usage: no file is given; give one");
}

TEST(Console, PrintsAMessageOnOneLine) {
  std::ostringstream out;
  std::ostringstream err;
  PrintError({out, err}, "refused: <a>\r\n<b> \x1b[31m\tend");
  EXPECT_EQ(err.str(), "refused: <a> <b>  [31m end\n");
  EXPECT_EQ(out.str(), "");
}

TEST(Console, MarksAWarning) {
  std::ostringstream out;
  std::ostringstream err;
  Warn({out, err}, "--x is ignored");
  EXPECT_EQ(err.str(), "krnqb: warning: --x is ignored\n");
}

}  // namespace
}  // namespace krnqb::cli
