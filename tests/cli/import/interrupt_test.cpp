#include <gtest/gtest.h>

#include <csignal>
#include <nlohmann/json.hpp>

#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::Workplace;

// Interrupts the process when it is first asked for the time, which an import does while it rebuilds the
// tables.
class InterruptingClock : public Clock {
 public:
  LocalDateTime Now() override {
    if (!interrupted_) std::raise(SIGINT);
    interrupted_ = true;
    return tests::JanuaryClock()->Now();
  }

 private:
  bool interrupted_ = false;
};

Surroundings Interrupting() {
  return {.clock = std::make_shared<InterruptingClock>(), .errorIsTerminal = false};
}

TEST(InterruptedImport, EndsWith130AndWritesNothing) {
  const Workplace place;
  place.Nursery();
  const std::string before = ReadText(place / "ald.kpf");
  const ProgramRun run =
      RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--income"}), Interrupting());
  EXPECT_EQ(run.code, 130);
  EXPECT_EQ(run.err, "krnqb: import interrupted: stopped on request; nothing was written\n");
  EXPECT_EQ(run.out.find("Wrote"), std::string::npos);
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
  EXPECT_FALSE(std::filesystem::exists(place / "ald.kpf.bak"));
}

TEST(InterruptedImport, IsToldAsJson) {
  const Workplace place;
  place.Nursery();
  const ProgramRun run =
      RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--json"}), Interrupting());
  EXPECT_EQ(run.code, 130);
  const auto object = nlohmann::json::parse(run.out);
  EXPECT_EQ(object.at("result"), "interrupted");
  EXPECT_TRUE(object.at("incomplete").empty());
  EXPECT_TRUE(object.at("tables").empty());
  // The tables are rebuilt between 80 and 100.
  EXPECT_EQ(object.at("events").back().at("percent"), 100);
}

TEST(InterruptedImport, IsNotForcedByAcceptIncomplete) {
  const Workplace place;
  place.Nursery();
  const std::string before = ReadText(place / "ald.kpf");
  EXPECT_EQ(
      RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--accept-incomplete"}), Interrupting())
          .code,
      130);
  EXPECT_EQ(ReadText(place / "ald.kpf"), before);
}

TEST(InterruptedImport, LeavesThePlanToTheNextOne) {
  const Workplace place;
  place.Nursery();
  const auto arguments = place.ImportArguments("ald.kpf", {"--expenses"});
  EXPECT_EQ(RunProgram(arguments, Interrupting()).code, 130);
  EXPECT_EQ(RunProgram(arguments).code, 0);
}

}  // namespace
}  // namespace krnqb::cli
