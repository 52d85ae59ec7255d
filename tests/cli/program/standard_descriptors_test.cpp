#include <gtest/gtest.h>

#include "cli/program/child_process.h"
#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using tests::ReadText;
using tests::RunShell;
using tests::ShellRun;
using tests::Workplace;

struct Closed {
  bool input;
  bool output;
  bool errors;
};

class ClosedDescriptors : public testing::TestWithParam<Closed> {
 protected:
  ClosedDescriptors() {
    place.Nursery();
    // A recording: with a company, its database library would occupy the closed descriptors.
    EXPECT_EQ(
        Shell("krnqb import --company nursery.qbw --plan ald.kpf --expenses --dry-run --record recording")
            .code,
        0);
    if (GetParam().input) redirections += " <&-";
    if (GetParam().output) redirections += " >&-";
    if (GetParam().errors) redirections += " 2>&-";
  }

  ShellRun Shell(const std::string& command) const { return RunShell(place.Folder().string(), command); }

  const Workplace place;
  std::string redirections;
};

TEST_P(ClosedDescriptors, AreNotTakenByThePlansFiles) {
  const std::string before = ReadText(place / "ald.kpf");
  const ShellRun run = Shell("krnqb import --replay recording --plan ald.kpf --expenses" + redirections);
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(ReadText(place / "ald.kpf.lock"), "");
  EXPECT_EQ(ReadText(place / "ald.kpf.bak"), before);
  EXPECT_EQ(Shell("krnqb plan show ald.kpf >shown").code, 0);
  EXPECT_EQ(run.out.empty(), GetParam().output);
  if (!GetParam().errors) {
    EXPECT_EQ(run.err.empty(), !GetParam().output) << run.err;
  }
}

TEST_P(ClosedDescriptors, AreNotTakenByARecording) {
  const ShellRun run =
      Shell("krnqb import --replay recording --plan ald.kpf --expenses --record copy --accept-incomplete" +
            redirections);
  EXPECT_EQ(run.code, 0);
  const std::string copy = ReadText(place / "copy");
  EXPECT_TRUE(copy.starts_with("{\"exchange\":1,")) << copy;
  EXPECT_EQ(copy.find("Importing"), std::string::npos) << copy;
}

TEST_P(ClosedDescriptors, FailIfTheResultIsToBePrinted) {
  EXPECT_EQ(Shell("krnqb plan show ald.kpf" + redirections).code, GetParam().output ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(AllCombinations, ClosedDescriptors,
                         testing::Values(Closed{true, false, false}, Closed{false, true, false},
                                         Closed{false, false, true}, Closed{true, true, false},
                                         Closed{true, false, true}, Closed{false, true, true},
                                         Closed{true, true, true}));

}  // namespace
}  // namespace krnqb::cli
