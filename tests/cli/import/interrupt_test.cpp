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

// Interrupts the process when it is read for the given time; 0 means never. An import reads the clock for
// each table that it rebuilds.
class InterruptingClock : public Clock {
 public:
  explicit InterruptingClock(int interruptAt = 1, int signal = SIGINT)
      : interruptAt_(interruptAt), signal_(signal) {}

  LocalDateTime Now() override {
    ++asked_;
    if (asked_ == interruptAt_) std::raise(signal_);
    return tests::JanuaryClock()->Now();
  }

  int Asked() const noexcept { return asked_; }

 private:
  const int interruptAt_;
  const int signal_;
  int asked_ = 0;
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

TEST(InterruptedImport, EndsWith128AndTheNumberOfTheSignal) {
  struct Case {
    int signal;
    int code;
    const char* line;
  };
  const Workplace place;
  place.Nursery();
  const std::string before = ReadText(place / "ald.kpf");
  for (const auto& [signal, code, line] :
       {Case{SIGTERM, 143, "krnqb: import interrupted: asked to end (SIGTERM); nothing was written\n"},
        Case{SIGHUP, 129,
             "krnqb: import interrupted: the terminal was closed (SIGHUP); nothing was written\n"}}) {
    const ProgramRun run =
        RunProgram(place.ImportArguments("ald.kpf", {"--expenses"}),
                   {.clock = std::make_shared<InterruptingClock>(1, signal), .errorIsTerminal = false});
    EXPECT_EQ(run.code, code);
    EXPECT_EQ(run.err, line);
    EXPECT_EQ(ReadText(place / "ald.kpf"), before);
    EXPECT_FALSE(std::filesystem::exists(place / "ald.kpf.tmp"));
  }
}

TEST(InterruptedImport, IsReportedAsJson) {
  const Workplace place;
  place.Nursery();
  const ProgramRun run =
      RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--json"}), Interrupting());
  EXPECT_EQ(run.code, 130);
  const auto object = nlohmann::json::parse(run.out);
  EXPECT_EQ(object.at("result"), "interrupted");
  EXPECT_TRUE(object.at("incomplete").empty());
  EXPECT_TRUE(object.at("tables").empty());
  EXPECT_TRUE(object.at("changes").empty());
  EXPECT_TRUE(object.at("backup").is_null());
  EXPECT_EQ(object.at("remedy"), "nothing was written");
  EXPECT_EQ(object.at("settings").at("product"), "ald");
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

// After the last table is rebuilt the amounts are read. An interrupt ends that reading early.
TEST(InterruptedImport, ReportsNothingAsIncomplete) {
  const Workplace place;
  place.NurseryYear();
  const auto arguments =
      place.ImportArguments("ald.kpf", {"--expenses", "--income", "--balances", "all", "--dry-run"});
  const auto counting = std::make_shared<InterruptingClock>(0);
  EXPECT_EQ(RunProgram(arguments, {.clock = counting, .errorIsTerminal = false}).code, 0);
  const auto interrupting = std::make_shared<InterruptingClock>(counting->Asked());
  const ProgramRun run = RunProgram(arguments, {.clock = interrupting, .errorIsTerminal = false});
  EXPECT_EQ(run.code, 130);
  EXPECT_EQ(run.err, "krnqb: import interrupted: stopped on request; nothing was written\n");
}

TEST(InterruptedImport, ReleasesThePlanForTheNextImport) {
  const Workplace place;
  place.Nursery();
  const auto arguments = place.ImportArguments("ald.kpf", {"--expenses"});
  EXPECT_EQ(RunProgram(arguments, Interrupting()).code, 130);
  EXPECT_EQ(RunProgram(arguments).code, 0);
}

TEST(InterruptedImport, WritesNoJournal) {
  const Workplace place;
  place.Nursery();
  const std::string journal = place / "journal";
  EXPECT_EQ(
      RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--journal", journal}), Interrupting()).code,
      130);
  EXPECT_FALSE(std::filesystem::exists(journal));
}

}  // namespace
}  // namespace krnqb::cli
