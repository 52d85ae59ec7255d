#include "cli/dialog/module.h"

#include <gtest/gtest.h>

#include "build_paths.h"
#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using krnqb::tests::ExpectedVersion;
using tests::ProgramRun;
using tests::RunProgram;
using tests::Workplace;

const std::string failed = "krnqb: showing the dialog failed: ";
const std::string installThisVersion =
    "; install version " + ExpectedVersion() + " of the package krnqb-dialogs\n";

// Runs `krnqb dialog about` with dialogs from a module.
ProgramRun ShowWith(const std::filesystem::path& module) {
  return RunProgram({"dialog", "about"}, {.clock = nullptr,
                                          .errorIsTerminal = false,
                                          .dialogToolkit = [module] { return LoadToolkit(module); }});
}

TEST(DialogModule, IsInAFolderOfItsOwnBelowTheLibraries) {
  EXPECT_EQ(DialogModule().filename(), "dialogs.so");
  EXPECT_EQ(DialogModule().parent_path().filename(), "krnqb");
  EXPECT_EQ(DialogModule(), DialogModule().lexically_normal());
  EXPECT_TRUE(DialogModule().is_absolute());
}

TEST(DialogModule, ThatIsMissingIsNamedWithItsPackage) {
  const Workplace place;
  const ProgramRun run = ShowWith(place / "dialogs.so");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, failed + "the dialogs are not installed: " + place / "dialogs.so" +
                         " is missing; install the package krnqb-dialogs, or build krnqb with Qt 6\n");
}

TEST(DialogModule, ThatIsNoLibraryIsReportedWithTheLoadersReason) {
  const Workplace place;
  tests::WriteText(place / "dialogs.so", std::string(5000, 'x'));
  const ProgramRun run = ShowWith(place / "dialogs.so");
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, failed + "the dialogs cannot be loaded: " + place / "dialogs.so" +
                         ": invalid ELF header" + installThisVersion);
}

TEST(DialogModule, OfAnotherVersionIsRefused) {
  const std::string module = krnqb::tests::ModuleOfAnotherVersion();
  const ProgramRun run = ShowWith(module);
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, failed + module + " is of version 0.9.7, this krnqb is of version " + ExpectedVersion() +
                         installThisVersion);
}

TEST(DialogModule, WithoutItsFunctionIsRefused) {
  const std::string module = krnqb::tests::ModuleWithoutFunction();
  const ProgramRun run = ShowWith(module);
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.err, failed + "the dialogs cannot be loaded: " + module +
                         ": undefined symbol: KrnqbMakeToolkit" + installThisVersion);
}

}  // namespace
}  // namespace krnqb::cli
