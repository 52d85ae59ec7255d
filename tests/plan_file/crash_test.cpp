#include <fcntl.h>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <random>

#include "files/descriptor.h"
#include "files/lock.h"
#include "files/step_operations.h"
#include "plan_file/file.h"
#include "plan_file/fixture.h"
#include "plan_file/write_process.h"

namespace krnqb::plan_file {
namespace {

using files::Moment;
using files::momentNames;
using files::Step;
using files::stepNames;

namespace fs = std::filesystem;

class KilledSave : public testing::Test {
 protected:
  KilledSave() : file(folder / "garden.kpf") {
    PlanFile::Create(file, QBKRN_COR, {2003, 1});
    SaveVersion(0);
  }

  // Locks, changes and saves the plan, as the next import does.
  void SaveVersion(int version) {
    const files::PlanLock lock(file);
    const auto plan = PlanFile::Open(file);
    MarkVersion(*plan, version);
    plan->Save();
    EXPECT_EQ(WholeVersion(file), version);
    EXPECT_FALSE(fs::exists(folder / "garden.kpf.tmp"));
    EXPECT_FALSE(fs::exists(folder / "garden.kpf.bak.tmp"));
  }

  TemporaryFolder folder;
  fs::path file;
};

struct KillAt {
  Step step;
  Moment moment;
  int version;  // expected in the file afterwards; 0 is the old version
};

class KilledAtAStep : public KilledSave, public testing::WithParamInterface<KillAt> {};

TEST_P(KilledAtAStep, LeavesACompletePlanAndTheNextImportSucceeds) {
  const KillAt& kill = GetParam();
  WriteProcess child({"step", file.string(), "1", std::string(stepNames[static_cast<std::size_t>(kill.step)]),
                      std::string(momentNames[static_cast<std::size_t>(kill.moment)])});
  ASSERT_EQ(child.Wait(), -SIGKILL);
  EXPECT_EQ(WholeVersion(file), kill.version);
  SaveVersion(2);
  EXPECT_EQ(WholeVersion(folder / "garden.kpf.bak"), kill.version);
}

std::vector<KillAt> EveryStep() {
  std::vector<KillAt> kills{{Step::Write, Moment::During, 0}};
  for (auto index = std::size_t{0}; index <= static_cast<std::size_t>(Step::SyncFolder); ++index) {
    const Step step = static_cast<Step>(index);
    kills.push_back({step, Moment::Before, step > Step::Rename ? 1 : 0});
    kills.push_back({step, Moment::After, step >= Step::Rename ? 1 : 0});
  }
  return kills;
}

INSTANTIATE_TEST_SUITE_P(PlanCrash, KilledAtAStep, testing::ValuesIn(EveryStep()),
                         [](const testing::TestParamInfo<KillAt>& test) {
                           return std::string(momentNames[static_cast<std::size_t>(test.param.moment)]) +
                                  std::string(stepNames[static_cast<std::size_t>(test.param.step)]);
                         });

// Tries to open a file for a period of time and returns how often it was missing.
int TimesAbsent(const fs::path& file, std::chrono::microseconds duration) {
  int absent = 0;
  const auto end = std::chrono::steady_clock::now() + duration;
  do {
    const files::FileDescriptor opened = files::FileDescriptor::Open(file, O_RDONLY);
    if (!opened) ++absent;
  } while (std::chrono::steady_clock::now() < end);
  return absent;
}

TEST_F(KilledSave, AtFiftyRandomMomentsLeavesACompletePlanAndTheNextImportSucceeds) {
  std::mt19937 random(2002);
  std::uniform_int_distribution<int> microseconds(0, 15000);
  int version = 0;
  for (int round = 0; round < 50; ++round) {
    WriteProcess child({"loop", file.string(), std::to_string(version + 1)});
    ASSERT_EQ(child.ReadLine(), "saved");
    EXPECT_EQ(TimesAbsent(file, std::chrono::microseconds(microseconds(random))), 0);
    child.Signal(SIGKILL);
    ASSERT_EQ(child.Wait(), -SIGKILL);

    const std::optional<int> found = WholeVersion(file);
    ASSERT_TRUE(found) << "the plan is incomplete in round " << round;
    EXPECT_GT(*found, version);
    if (fs::exists(folder / "garden.kpf.bak")) {
      EXPECT_TRUE(WholeVersion(folder / "garden.kpf.bak")) << round;
    }
    version = *found + 1;
    SaveVersion(version);
  }
}

}  // namespace
}  // namespace krnqb::plan_file
