#include <gtest/gtest.h>

#include "cli/program/child_process.h"
#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using tests::RunShell;
using tests::ShellRun;
using tests::Workplace;

#ifdef KRNQB_HAS_DIALOGS
// The reason is an Error that the module with the dialogs throws.
constexpr const char* noDisplay =
    "krnqb: showing the dialog failed: there is no display; run it on a desktop, or under xvfb-run\n";

TEST(ProgramWithoutADisplay, SaysSoAndExitsWithOne) {
  const Workplace place;
  for (const char* dialog :
       {"about", "export", "company", "plan", "options --company none.qbw --plan none.kpf"}) {
    const ShellRun run =
        RunShell(place.Folder().string(),
                 std::string("env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM krnqb dialog ") + dialog);
    EXPECT_EQ(run.code, 1) << dialog;
    EXPECT_EQ(run.out, "") << dialog;
    EXPECT_EQ(run.err, noDisplay) << dialog;
  }
}
#endif

TEST(ProgramWithoutADisplay, RunsEveryOtherCommand) {
  const Workplace place;
  const ShellRun run = RunShell(place.Folder().string(),
                                "env -u DISPLAY -u WAYLAND_DISPLAY krnqb companies --quickbooks-folder .");
  EXPECT_EQ(run.code, 0) << run.err;
}

}  // namespace
}  // namespace krnqb::cli
