#include <gtest/gtest.h>

#include <csignal>
#include <nlohmann/json.hpp>

#include "cli/workplace.h"
#include "limited_files.h"

namespace krnqb::cli {
namespace {

using tests::ProgramRun;
using tests::ReadText;
using tests::RunProgram;
using tests::Workplace;

void Interrupt(int /*signal*/) {
  std::raise(SIGINT);
}

class FailedSave : public testing::Test {
 protected:
  void SetUp() override {
    place.Nursery();
    before = ReadText(plan);
  }
  ProgramRun Import(void (*handler)(int)) const {
    const krnqb::tests::LimitedFiles limit(1024, handler);  // saving the plan fails halfway
    return RunProgram(place.ImportArguments("ald.kpf", {"--expenses", "--json"}));
  }

  const Workplace place;
  const std::string plan = place / "ald.kpf";
  std::string before;
};

TEST_F(FailedSave, ListsNoTablesAsChanged) {
  const ProgramRun run = Import(SIG_IGN);
  EXPECT_EQ(run.code, 1);
  const auto object = nlohmann::json::parse(run.out);
  EXPECT_EQ(object.at("result"), "failed");
  EXPECT_EQ(object.at("tables"), nlohmann::json::array());
  EXPECT_EQ(ReadText(plan), before);
}

TEST_F(FailedSave, StaysAFailureIfAnInterruptArrivesMeanwhile) {
  const ProgramRun run = Import(Interrupt);
  EXPECT_EQ(run.code, 1);
  EXPECT_EQ(nlohmann::json::parse(run.out).at("result"), "failed");
  EXPECT_EQ(run.err.find("interrupted"), std::string::npos) << run.err;
  EXPECT_EQ(ReadText(plan), before);
}

}  // namespace
}  // namespace krnqb::cli
