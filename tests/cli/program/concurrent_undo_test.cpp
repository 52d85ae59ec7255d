#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <list>

#include "cli/program/child_process.h"
#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using tests::ChildProcess;
using tests::ReadText;
using tests::RunProgram;
using tests::Workplace;

namespace fs = std::filesystem;

// Imports and undoes in one plan at the same time.
TEST(ConcurrentUndos, AndImportsExcludeEachOtherAndLoseNoVersion) {
  const Workplace place;
  place.Nursery();
  const std::string plan = place / "ald.kpf";
  const auto importing = place.ImportArguments("ald.kpf", {"--expenses", "--income", "--quiet"});
  const std::string first = ReadText(plan);
  ASSERT_EQ(ChildProcess(importing).Wait(), 0);

  std::list<ChildProcess> processes;
  for (int number = 0; number < 6; ++number) {
    processes.emplace_back(importing);
    processes.emplace_back(std::vector<std::string>{"plan", "undo", plan});
  }
  for (ChildProcess& process : processes) {
    const int code = process.Wait();
    const std::string errors = process.Errors();
    const bool locked = errors.find("another import or undo is changing it") != std::string::npos;
    const bool nothingToUndo = errors.find("no import is left to undo") != std::string::npos;
    EXPECT_TRUE(code == 0 || (code == 1 && (locked || nothingToUndo))) << code << ": " << errors;
  }
  const auto listed = RunProgram({"plan", "history", plan});
  EXPECT_EQ(listed.code, 0) << listed.err;
  EXPECT_EQ(listed.err, "");
  EXPECT_EQ(RunProgram({"plan", "show", plan}).code, 0);
  EXPECT_EQ(ReadText(plan + ".history/0001.kpf"), first);
  for (const auto& file : fs::directory_iterator(plan + ".history")) {
    EXPECT_FALSE(file.path().string().ends_with(".tmp")) << file.path();
  }
  RunProgram({"plan", "undo", plan, "--to", "1"});
  EXPECT_EQ(ReadText(plan), first);
}

TEST(KilledUndo, LeavesAWholePlanAndCanBeRepeated) {
  const Workplace place;
  place.Nursery();
  const std::string plan = place / "ald.kpf";
  const std::string before = ReadText(plan);
  ASSERT_EQ(RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--income"})).code, 0);
  const std::string after = ReadText(plan);
  for (unsigned delay = 0; delay < 20'000; delay += 1'000) {
    ChildProcess undo({"plan", "undo", plan});
    ::usleep(delay);
    undo.Signal(SIGKILL);
    undo.Wait();
    const std::string left = ReadText(plan);
    ASSERT_TRUE(left == before || left == after) << delay;
    EXPECT_EQ(RunProgram({"plan", "history", plan}).err, "") << delay;
    const std::vector<std::string> undoing{"plan", "undo", plan, "--to", left == after ? "1" : "2"};
    EXPECT_EQ(RunProgram(undoing).code, 0) << delay;
    EXPECT_EQ(ReadText(plan), left == after ? before : after) << delay;
    if (left == after) {
      EXPECT_EQ(RunProgram({"plan", "undo", plan, "--to", "2"}).code, 0) << delay;
    }
    EXPECT_EQ(ReadText(plan), after) << delay;
  }
}

}  // namespace
}  // namespace krnqb::cli
