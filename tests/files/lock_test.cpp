#include "files/lock.h"

#include <gtest/gtest.h>

#include <csignal>

#include "plan_file/child_process.h"
#include "plan_file/fixture.h"

namespace krnqb::files {
namespace {

using namespace plan_file;

namespace fs = std::filesystem;

class PlanLockTest : public testing::Test {
 protected:
  PlanLockTest() : file(folder / "garden.kpf") { WriteText(file, SmallPlanText()); }

  TemporaryFolder folder;
  fs::path file;
};

TEST_F(PlanLockTest, RefusesASecondImportWhileTheFirstHoldsIt) {
  ChildProcess first({"hold", file.string()});
  ASSERT_EQ(first.ReadLine(), "held");
  const auto error = ErrorOf([&] { const PlanLock second(file); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Description(),
            "cannot import into the plan " + file.string() +
                ": another import is changing it; wait until that import has ended and try "
                "again");
}

TEST_F(PlanLockTest, IsFreeAgainWhenItsHolderWasKilled) {
  ChildProcess first({"hold", file.string()});
  ASSERT_EQ(first.ReadLine(), "held");
  first.Kill();
  ASSERT_EQ(first.Wait(), -SIGKILL);
  EXPECT_FALSE(ErrorOf([&] { const PlanLock second(file); }));
  EXPECT_TRUE(fs::exists(folder / "garden.kpf.lock"));
}

TEST_F(PlanLockTest, IsFreeAgainAtTheEndOfItsLifeAndItsFileStays) {
  { const PlanLock first(file); }
  EXPECT_TRUE(fs::exists(folder / "garden.kpf.lock"));
  EXPECT_FALSE(ErrorOf([&] { const PlanLock second(file); }));
}

TEST_F(PlanLockTest, IsSharedByAllNamesOfOnePlan) {
  fs::create_directory(folder / "links");
  fs::create_symlink("../garden.kpf", folder / "links" / "plan.kpf");
  const PlanLock first(folder / "links" / "plan.kpf");
  EXPECT_TRUE(fs::exists(folder / "garden.kpf.lock"));
  EXPECT_FALSE(fs::exists(folder / "links" / "plan.kpf.lock"));
  EXPECT_TRUE(ErrorOf([&] { const PlanLock second(file); }));
}

TEST_F(PlanLockTest, OfAnotherPlanIsAnotherOne) {
  WriteText(folder / "other.kpf", SmallPlanText());
  const PlanLock first(file);
  EXPECT_FALSE(ErrorOf([&] { const PlanLock second(folder / "other.kpf"); }));
}

TEST_F(PlanLockTest, OfAMissingPlanIsRefusedAndLeavesNoFile) {
  EXPECT_TRUE(ErrorOf([&] { const PlanLock lock(folder / "none.kpf"); }));
  EXPECT_FALSE(fs::exists(folder / "none.kpf.lock"));
}

}  // namespace
}  // namespace krnqb::files
