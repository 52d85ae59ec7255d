#include "plan_file/history/keeping.h"

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "plan_file/history/digest.h"
#include "plan_file/history/testing.h"

namespace krnqb::plan_file {
namespace {

namespace fs = std::filesystem;

using Numbers = std::vector<std::int32_t>;

unsigned PermissionsOf(const fs::path& file) {
  struct stat status {};
  return ::stat(file.c_str(), &status) == 0 ? status.st_mode & 07777U : 0U;
}

TEST(SaveWithHistory, KeepsTheVersionBeforeEachImportByteForByte) {
  const ImportedPlan plan;
  EXPECT_EQ(ReadText(plan.Kept("0001.kpf")), plan.texts[0]);
  EXPECT_EQ(ReadText(plan.Kept("0002.kpf")), plan.texts[1]);
  EXPECT_EQ(ReadText(plan.Kept("0003.kpf")), plan.texts[2]);
  EXPECT_EQ(ReadText(plan.folder / "garden.kpf.bak"), plan.texts[2]);
  EXPECT_EQ(WholeVersion(plan.file), 3);
  EXPECT_EQ(plan.folder.FileNames(), (std::vector<std::string>{"garden.kpf", "garden.kpf.bak",
                                                               "garden.kpf.history", "garden.kpf.lock"}));
}

TEST(SaveWithHistory, DescribesTheVersion) {
  const ImportedPlan plan;
  files::SystemFileOperations operations;
  const HistoryFolder folder(plan.file, HistoryUse::Reading, operations);
  EXPECT_EQ(folder.Describe(1), (HistoryEntry{.number = 1,
                                              .when = "2003-01-15T12:00:00",
                                              .kept = {DigestOf(plan.texts[0]), 0, false},
                                              .written = {DigestOf(plan.texts[1]), 1, false},
                                              .import = GardenImport()}));
  EXPECT_EQ(folder.Describe(3).kept, (PlanVersion{DigestOf(plan.texts[2]), 2, false}));
  EXPECT_EQ(folder.Describe(3).written, (PlanVersion{DigestOf(plan.texts[3]), 3, false}));
}

TEST(SaveWithHistory, LetsOnlyTheOwnerReadTheHistory) {
  const mode_t umask = ::umask(0);
  {
    const ImportedPlan plan;
    EXPECT_EQ(PermissionsOf(plan.Kept("")), 0700U);
    EXPECT_EQ(PermissionsOf(plan.Kept("0001.kpf")), 0600U);
    EXPECT_EQ(PermissionsOf(plan.Kept("0001.json")), 0600U);
    EXPECT_EQ(PermissionsOf(plan.file), 0666U);
  }
  ::umask(umask);
}

TEST(SaveWithHistory, GivesTheHistoryToThePlansOwner) {
  if (::geteuid() != 0) GTEST_SKIP() << "only an administrator can work on another user's plan";
  const TemporaryFolder folder;
  const fs::path file = folder / "garden.kpf";
  WriteText(file, SmallPlanText());
  constexpr uid_t nobody = 65534;
  ASSERT_EQ(::chown(file.c_str(), nobody, nobody), 0);
  ImportVersion(file, 1);
  for (const char* name :
       {"garden.kpf.history", "garden.kpf.history/0001.kpf", "garden.kpf.history/0001.json"}) {
    struct stat status {};
    ASSERT_EQ(::stat((folder / name).c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, nobody) << name;
  }
}

TEST(SaveWithHistory, KeepsTheLastVersionsAndTheFirst) {
  struct Case {
    std::int32_t keep;
    Numbers left;
  };
  const Case cases[] = {{20, {1, 2, 3, 4, 5, 6}}, {6, {1, 2, 3, 4, 5, 6}}, {5, {1, 2, 3, 4, 5, 6}},
                        {4, {1, 3, 4, 5, 6}},     {2, {1, 5, 6}},          {1, {1, 6}}};
  for (const Case& tried : cases) {
    const ImportedPlan plan;
    ImportVersion(plan.file, 4);
    ImportVersion(plan.file, 5);
    EXPECT_EQ(ImportVersion(plan.file, 6, tried.keep).number, 6);
    const HistoryState state = StateNow(plan.file);
    EXPECT_EQ(state.numbers, tried.left) << tried.keep;
    EXPECT_EQ(state.next, 7);
    EXPECT_EQ(ReadText(plan.Kept("0001.kpf")), plan.texts[0]);
    EXPECT_EQ(WholeVersion(plan.Kept("0006.kpf")), 5);
  }
}

TEST(SaveWithHistory, KeepsTwentyVersionsAndTheFirst) {
  const ImportedPlan plan;
  for (int version = 4; version <= 25; ++version) ImportVersion(plan.file, version);
  const Numbers numbers = StateNow(plan.file).numbers;
  ASSERT_EQ(numbers.size(), 21U);
  EXPECT_EQ(numbers[0], 1);
  EXPECT_EQ(numbers[1], 6);
  EXPECT_EQ(numbers.back(), 25);
}

TEST(SaveWithHistory, RemembersThatAnotherProgramHasChangedThePlan) {
  const ImportedPlan plan;
  WriteText(plan.file, plan.texts[3] + "<!-- edited -->");
  ImportVersion(plan.file, 4);
  files::SystemFileOperations operations;
  const HistoryFolder folder(plan.file, HistoryUse::Reading, operations);
  EXPECT_EQ(folder.Describe(4).kept, (PlanVersion{DigestOf(plan.texts[3] + "<!-- edited -->"), 3, true}));
  EXPECT_EQ(ReadText(plan.Kept("0004.kpf")), plan.texts[3] + "<!-- edited -->");
}

TEST(SaveWithHistory, FollowsTheLinkToThePlan) {
  const TemporaryFolder folder;
  fs::create_directory(folder / "real");
  WriteText(folder / "real/garden.kpf", SmallPlanText());
  fs::create_symlink("real/garden.kpf", folder / "link.kpf");
  ImportVersion(folder / "link.kpf", 1);
  EXPECT_EQ(ReadText(folder / "real/garden.kpf.history/0001.kpf"), SmallPlanText());
  EXPECT_FALSE(fs::exists(folder / "link.kpf.history"));
}

TEST(StateOf, TakesAnEntryThatDidNotHappenForNone) {
  const ImportedPlan plan;
  // An import that was killed before it replaced the plan.
  WriteText(plan.file, plan.texts[2]);
  HistoryState state = StateNow(plan.file);
  EXPECT_EQ(state.numbers, (Numbers{1, 2}));
  EXPECT_EQ(state.next, 3);
  EXPECT_TRUE(state.asWritten);
  EXPECT_EQ(state.plan, (PlanVersion{DigestOf(plan.texts[2]), 2, false}));
  // One that was killed before it described the version.
  fs::remove(plan.Kept("0003.json"));
  state = StateNow(plan.file);
  EXPECT_EQ(state.numbers, (Numbers{1, 2}));
  EXPECT_EQ(state.next, 3);
  EXPECT_TRUE(state.asWritten);
}

}  // namespace
}  // namespace krnqb::plan_file
