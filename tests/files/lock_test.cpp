#include "files/lock.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <csignal>

#include "files/unprivileged_user.h"
#include "plan_file/write_process.h"
#include "temporary_folder.h"
#include "thrown_error.h"

namespace krnqb::files {
namespace {

using plan_file::WriteProcess;
using tests::ErrorOf;
using tests::TemporaryFolder;
using tests::ThrownError;
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
            "cannot change the plan " + file.string() +
                ": another import or undo is changing it; wait until that has ended and try "
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

TEST_F(PlanLockTest, DoesNotFollowASymbolicLink) {
  for (const char* target : {"victim", "garden.kpf"}) {
    fs::create_symlink(target, folder / "garden.kpf.lock");
    EXPECT_EQ(ThrownError([&] { const PlanLock lock(file); }).Description(),
              "cannot lock the plan with " + (folder / "garden.kpf.lock").string() +
                  ": it is a symbolic link; move it away and try again");
    EXPECT_FALSE(fs::exists(folder / "victim"));
    fs::remove(folder / "garden.kpf.lock");
  }
}

TEST_F(PlanLockTest, RefusesAPipeWithoutWaiting) {
  ASSERT_EQ(::mkfifo((folder / "garden.kpf.lock").c_str(), 0600), 0);
  EXPECT_EQ(ThrownError([&] { const PlanLock lock(file); }).Description(),
            "cannot lock the plan with " + (folder / "garden.kpf.lock").string() +
                ": it is not a regular file; move it away and try again");
}

TEST_F(PlanLockTest, NamesThePermissionIfItsFolderIsReadOnly) {
  fs::permissions(folder.Path(), fs::perms(0555));
  const UnprivilegedUser user;
  if (!user.Restricted()) GTEST_SKIP() << "permissions are not checked for this user";
  EXPECT_EQ(ThrownError([&] { const PlanLock lock(file); }).Description(),
            "cannot lock the plan with " + (folder / "garden.kpf.lock").string() +
                ": Permission denied; make sure that you have permission to use the file and its folder");
}

TEST_F(PlanLockTest, NeedsNoPermissionToWriteAnExistingLockFile) {
  WriteText(folder / "garden.kpf.lock", "");
  fs::permissions(folder / "garden.kpf.lock", fs::perms(0444));
  fs::permissions(folder.Path(), fs::perms(0555));
  const UnprivilegedUser user;
  if (!user.Restricted()) GTEST_SKIP() << "permissions are not checked for this user";
  EXPECT_FALSE(ErrorOf([&] { const PlanLock lock(file); }));
}

class FailingLockFile : public SystemFileOperations {
 public:
  explicit FailingLockFile(std::errc failure) : failure_(failure) {}
  std::error_code OpenLockFile(const fs::path& /*file*/, FileDescriptor& /*opened*/) override {
    return std::make_error_code(failure_);
  }

 private:
  const std::errc failure_;
};

TEST_F(PlanLockTest, ReportsEveryReasonForWhichItsFileCannotBeOpened) {
  for (const std::errc reason : {std::errc::io_error, std::errc::no_space_on_device,
                                 std::errc::too_many_files_open, std::errc::read_only_file_system}) {
    FailingLockFile failing(reason);
    const std::string description = ThrownError([&] { const PlanLock lock(file, failing); }).Description();
    EXPECT_NE(description.find(std::make_error_code(reason).message()), std::string::npos) << description;
  }
}

TEST_F(PlanLockTest, CanBeLookedForWithoutBeingTaken) {
  EXPECT_FALSE(ErrorOf([&] { RequireFreeLock(file); }));
  EXPECT_FALSE(fs::exists(folder / "garden.kpf.lock"));
  {
    const PlanLock held(file);
    const auto error = ErrorOf([&] { RequireFreeLock(file); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Description().find("cannot change the plan " + file.string() + ": another import"), 0U);
  }
  EXPECT_FALSE(ErrorOf([&] { RequireFreeLock(file); }));
  EXPECT_FALSE(ErrorOf([&] { const PlanLock free(file); }));
}

TEST_F(PlanLockTest, IsNotLookedForBehindALinkOrInAFolder) {
  fs::create_symlink("elsewhere", folder / "garden.kpf.lock");
  EXPECT_EQ(ErrorOf([&] { RequireFreeLock(file); })->Description(),
            ErrorOf([&] { const PlanLock lock(file); })->Description());
  fs::remove(folder / "garden.kpf.lock");
  fs::create_directory(folder / "garden.kpf.lock");
  EXPECT_EQ(ErrorOf([&] { RequireFreeLock(file); })->Description(),
            "cannot lock the plan with " + file.string() +
                ".lock: it is not a regular file; move it away and try again");
}

}  // namespace
}  // namespace krnqb::files
