#include <gtest/gtest.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "cli/doctor/healthy_pair.h"
#include "cli/program/child_process.h"
#include "json_schema.h"

namespace krnqb::cli {
namespace {

using tests::RunShell;

TEST(DoctorProgram, EndsWithTheWorstVerdict) {
  const tests::HealthyPair pair;
  const std::string folder = std::filesystem::path(pair.Plan()).parent_path().string();
  const auto run = [&](const std::string& options) { return RunShell(folder, "krnqb doctor " + options); };
  const std::string both = "--company garden.qbw --plan garden.kpf";
  EXPECT_EQ(run(both).code, 0);
  EXPECT_EQ(run("--company garden.qbw").code, 2);
  pair.ChangePlan("start=\"2003-01\"", "start=\"2003-02\"");
  EXPECT_EQ(run(both).code, 3);
  const tests::ShellRun json = run(both + " --json");
  EXPECT_EQ(json.code, 3);
  EXPECT_EQ(krnqb::tests::SchemaViolation("doctor", json.out), "");
  EXPECT_EQ(nlohmann::json::parse(json.out).at("result"), "warn");
  std::filesystem::remove(pair.Company());
  EXPECT_EQ(run(both).code, 1);
}

// The lock is held by another process: that of the shell, which the program inherits only as a closed file.
TEST(DoctorProgram, SeesTheLockOfAnotherProcess) {
  const tests::HealthyPair pair;
  const std::string folder = std::filesystem::path(pair.Plan()).parent_path().string();
  const tests::ShellRun run = RunShell(
      folder, "exec 9>garden.kpf.lock; flock 9; krnqb doctor --company garden.qbw --plan garden.kpf 9>&-");
  EXPECT_EQ(run.code, 1);
  EXPECT_NE(run.out.find("fail  lock          cannot change the plan "), std::string::npos) << run.out;
}

}  // namespace
}  // namespace krnqb::cli
