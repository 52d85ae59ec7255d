#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include <chrono>
#include <random>

#include "cli/program/child_process.h"
#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using tests::ChildProcess;
using tests::ReadText;
using tests::WithoutStamps;
using tests::Workplace;

// Returns how long an import takes, in microseconds.
unsigned DurationOf(const std::vector<std::string>& arguments) {
  const auto begun = std::chrono::steady_clock::now();
  EXPECT_EQ(ChildProcess(arguments).Wait(), 0);
  const auto elapsed = std::chrono::steady_clock::now() - begun;
  return static_cast<unsigned>(std::chrono::duration_cast<std::chrono::microseconds>(elapsed).count());
}

TEST(KilledImport, LeavesThePlanOldOrNewAndDoesNotBlockTheNextImport) {
  const Workplace place;
  place.Nursery();
  const std::string plan = place / "ald.kpf";
  const std::string oldText = ReadText(plan);
  const auto arguments = place.ImportArguments("ald.kpf", {"--expenses", "--income", "--quiet"});
  const unsigned duration = DurationOf(arguments);
  const std::string newText = WithoutStamps(ReadText(plan));
  ASSERT_NE(newText, WithoutStamps(oldText));

  std::minstd_rand random(20030115);
  std::uniform_int_distribution<unsigned> moment(0, duration * 5 / 4);
  for (int round = 0; round < 50; ++round) {
    tests::WriteText(plan, oldText);
    const unsigned delay = moment(random);
    ChildProcess import(arguments);
    ::usleep(delay);
    import.Signal(SIGKILL);
    import.Wait();
    const std::string left = WithoutStamps(ReadText(plan));
    EXPECT_TRUE(left == WithoutStamps(oldText) || left == newText)
        << "killed after " << delay << " microseconds";
    EXPECT_EQ(ChildProcess(arguments).Wait(), 0) << "after a kill after " << delay << " microseconds";
    EXPECT_EQ(WithoutStamps(ReadText(plan)), newText);
  }
}

}  // namespace
}  // namespace krnqb::cli
