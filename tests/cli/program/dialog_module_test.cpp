#include <gtest/gtest.h>

#include <filesystem>

#include "build_paths.h"
#include "cli/program/child_process.h"
#include "cli/workplace.h"

#ifdef KRNQB_HAS_DIALOGS
namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;
using tests::RunShell;
using tests::ShellRun;
using tests::Workplace;

// An installed krnqb: the program, and room for its module with the dialogs at the same relative path.
struct InstalledProgram : testing::Test {
  InstalledProgram() {
    const fs::path built = krnqb::tests::Program();
    const fs::path modulePath =
        fs::path(krnqb::tests::BuiltDialogModule()).lexically_relative(built.parent_path());
    const fs::path programs = place.Folder() / "system/bin";
    fs::create_directories(programs);
    module = (programs / modulePath).lexically_normal();
    fs::create_directories(module.parent_path());
    program = programs / "krnqb";
    std::error_code otherFileSystem;
    fs::create_hard_link(built, program, otherFileSystem);
    if (otherFileSystem) fs::copy_file(built, program);
  }

  // Without a display, so that a module that is loaded shows nothing and says why.
  ShellRun ShowAbout(const std::string& command) const {
    return RunShell(place.Folder().string(),
                    "env -u DISPLAY -u WAYLAND_DISPLAY -u QT_QPA_PLATFORM " + command);
  }
  ShellRun ShowAbout() const { return ShowAbout(program.string() + " dialog about"); }

  const Workplace place;
  fs::path program;
  fs::path module;
};

constexpr const char* shown =
    "krnqb: showing the dialog failed: there is no display; run it on a desktop, or under xvfb-run\n";

TEST_F(InstalledProgram, LoadsTheModuleNextToIt) {
  fs::create_symlink(krnqb::tests::BuiltDialogModule(), module);
  EXPECT_EQ(ShowAbout().err, shown);
}

TEST_F(InstalledProgram, LoadsItAlsoIfStartedThroughALink) {
  fs::create_symlink(krnqb::tests::BuiltDialogModule(), module);
  fs::create_symlink(program, place.Folder() / "imports");
  EXPECT_EQ(ShowAbout("./imports dialog about").err, shown);
}

TEST_F(InstalledProgram, NamesThePackageWithoutTheModule) {
  const ShellRun run = ShowAbout();
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(run.out, "");
  EXPECT_EQ(run.err, "krnqb: showing the dialog failed: the dialogs are not installed: " + module.string() +
                         " is missing; install the package krnqb-dialogs, or build krnqb with Qt 6\n");
}

TEST_F(InstalledProgram, RunsEveryOtherCommandWithoutTheModule) {
  const ShellRun run = ShowAbout(program.string() + " tables --product ald");
  EXPECT_EQ(run.code, 0);
  EXPECT_EQ(run.err, "");
}

TEST_F(InstalledProgram, WritesCsvButNoWorkbookWithoutTheModuleForWorkbooks) {
  const std::string command = program.string() + " plan export ald.kpf ";
  const ShellRun workbook = RunShell(place.Folder().string(), command + "--xlsx plan.xlsx");
  EXPECT_EQ(workbook.code, 1);
  EXPECT_NE(workbook.err.find("workbooks.so: cannot open shared object file"), std::string::npos)
      << workbook.err;
  EXPECT_NE(workbook.err.find("or write CSV files with --csv\n"), std::string::npos) << workbook.err;
  EXPECT_FALSE(fs::exists(place.Folder() / "plan.xlsx"));
  EXPECT_EQ(RunShell(place.Folder().string(), command + "--csv tables").code, 0);
}

TEST_F(InstalledProgram, RefusesAModuleOfAnotherVersion) {
  fs::create_symlink(krnqb::tests::ModuleOfAnotherVersion(), module);
  const ShellRun run = ShowAbout();
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.err.find(" is of version 0.9.7, this krnqb is of version "), std::string::npos) << run.err;
}

}  // namespace
}  // namespace krnqb::cli
#endif
