#include "files/lock.h"

#include <gtest/gtest.h>

#include <csignal>

#include "plan_file/write_process.h"
#include "temporary_folder.h"
#include "thrown_error.h"

namespace krnqb::files {
namespace {

using plan_file::WriteProcess;
using tests::ErrorOf;
using tests::TemporaryFolder;
using tests::WriteText;

namespace fs = std::filesystem;

class PlanLockTest : public testing::Test {
 protected:
  PlanLockTest() : file(folder / "garden.kpf") { WriteText(file, "a plan"); }

  TemporaryFolder folder;
  fs::path file;
};

TEST_F(PlanLockTest, RefusesASecondImportWhileTheFirstHoldsIt) {
  WriteProcess first({"hold", file.string()});
  ASSERT_EQ(first.ReadLine(), "held");
  const auto error = ErrorOf([&] { const PlanLock second(file); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Description(),
            "cannot import into the plan " + file.string() +
                ": another import is changing it; wait until that import has ended and try "
                "again");
}

TEST_F(PlanLockTest, IsReleasedWhenItsHolderIsKilled) {
  WriteProcess first({"hold", file.string()});
  ASSERT_EQ(first.ReadLine(), "held");
  first.Signal(SIGKILL);
  ASSERT_EQ(first.Wait(), -SIGKILL);
  EXPECT_FALSE(ErrorOf([&] { const PlanLock second(file); }));
  EXPECT_TRUE(fs::exists(folder / "garden.kpf.lock"));
}

TEST_F(PlanLockTest, IsReleasedByItsDestructorAndItsFileStays) {
  { const PlanLock first(file); }
  EXPECT_TRUE(fs::exists(folder / "garden.kpf.lock"));
  EXPECT_FALSE(ErrorOf([&] { const PlanLock second(file); }));
}

TEST_F(PlanLockTest, IsSharedByAllPathsToOnePlan) {
  fs::create_directory(folder / "links");
  fs::create_symlink("../garden.kpf", folder / "links" / "plan.kpf");
  const PlanLock first(folder / "links" / "plan.kpf");
  EXPECT_TRUE(fs::exists(folder / "garden.kpf.lock"));
  EXPECT_FALSE(fs::exists(folder / "links" / "plan.kpf.lock"));
  EXPECT_TRUE(ErrorOf([&] { const PlanLock second(file); }));
}

TEST_F(PlanLockTest, DoesNotLockOtherPlans) {
  WriteText(folder / "other.kpf", "a plan");
  const PlanLock first(file);
  EXPECT_FALSE(ErrorOf([&] { const PlanLock second(folder / "other.kpf"); }));
}

TEST_F(PlanLockTest, NeedsAnExistingPlanAndLeavesNoFile) {
  EXPECT_TRUE(ErrorOf([&] { const PlanLock lock(folder / "none.kpf"); }));
  EXPECT_FALSE(fs::exists(folder / "none.kpf.lock"));
}

}  // namespace
}  // namespace krnqb::files
