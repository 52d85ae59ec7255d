#include <gtest/gtest.h>
#include <signal.h>
#include <unistd.h>

#include "cli/program/child_process.h"
#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using tests::ChildProcess;
using tests::RunProgram;
using tests::Workplace;

// Waits until a file is there, for ten seconds at most.
bool Appears(const std::string& file) {
  for (int waits = 0; waits < 1000; ++waits) {
    if (std::filesystem::exists(file)) return true;
    ::usleep(10'000);
  }
  return false;
}

TEST(InterruptedGeneration, ExitsWith130AndLeavesNoFile) {
  const Workplace place;
  const std::string file = place / "made.qbw";
  ChildProcess generation({"company", "generate", file, "--transactions", "200000"});
  ASSERT_TRUE(Appears(file));
  ::usleep(300'000);
  generation.Signal(SIGINT);
  EXPECT_EQ(generation.Wait(), 130);
  EXPECT_EQ(generation.Errors(),
            "krnqb: creating the company interrupted: stopped on request; no file was created\n");
  EXPECT_FALSE(std::filesystem::exists(file));
  EXPECT_FALSE(std::filesystem::exists(file + "-journal"));
}

TEST(InterruptedLoad, ExitsWith130AndLeavesTheCompanyAsItWas) {
  const Workplace place;
  const std::string file = place.Nursery();
  const std::string before = tests::ReadText(file);
  std::string accounts = "<QBXML><QBXMLMsgsRs><AccountQueryRs>";
  for (int number = 0; number < 100'000; ++number) {
    accounts += "<AccountRet><ListID>i" + std::to_string(number) +
                "</ListID><AccountType>Income</AccountType></AccountRet>";
  }
  tests::WriteText(place / "many.xml", accounts + "</AccountQueryRs></QBXMLMsgsRs></QBXML>");
  ChildProcess load({"company", "load", file, place / "many.xml"});
  ASSERT_TRUE(Appears(file + "-journal"));
  load.Signal(SIGINT);
  EXPECT_EQ(load.Wait(), 130);
  EXPECT_EQ(load.Errors(), "krnqb: loading interrupted: stopped on request; nothing was loaded\n");
  EXPECT_EQ(tests::ReadText(file), before);
  EXPECT_FALSE(std::filesystem::exists(file + "-journal"));
}

}  // namespace
}  // namespace krnqb::cli
