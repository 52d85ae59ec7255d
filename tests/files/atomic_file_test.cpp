#include "files/atomic_file.h"

#include <gtest/gtest.h>

#include "plan_file/fixture.h"
#include "plan_file/step_operations.h"

namespace krnqb::files {
namespace {

using namespace plan_file;

namespace fs = std::filesystem;

class CreatedFile : public testing::Test {
 protected:
  TemporaryFolder folder;
  fs::path file = folder / "new.kpf";
};

TEST_F(CreatedFile, AppearsWholeUnderItsName) {
  std::string seen;
  StepOperations operations([&](Step, Moment) -> std::error_code {
    if (fs::exists(file)) seen = ReadText(file);
    EXPECT_TRUE(seen.empty() || seen == "contents") << seen;
    return {};
  });
  CreateFile(file, "contents", operations);
  EXPECT_EQ(seen, "contents");
  EXPECT_FALSE(fs::exists(folder / "new.kpf.tmp"));
}

TEST_F(CreatedFile, IsNotThereWhenAStepFails) {
  for (const Step failing :
       {Step::CreateTemporary, Step::Write, Step::Sync, Step::Rename, Step::SyncFolder}) {
    StepOperations operations([&](Step step, Moment moment) {
      const bool fails = step == failing && moment == Moment::Before;
      return fails ? std::make_error_code(std::errc::io_error) : std::error_code();
    });
    const auto error = ErrorOf([&] { CreateFile(file, "contents", operations); });
    ASSERT_TRUE(error) << stepNames[static_cast<std::size_t>(failing)];
    EXPECT_NE(error->Description().find("there is no new file, check the disk and try again"),
              std::string::npos)
        << error->Description();
    EXPECT_TRUE(fs::is_empty(folder.Path())) << stepNames[static_cast<std::size_t>(failing)];
  }
}

class OneNameOnly : public SystemFileOperations {
  std::error_code AddName(const fs::path& /*file*/, const fs::path& /*name*/) override {
    return std::make_error_code(std::errc::operation_not_permitted);
  }
};

TEST_F(CreatedFile, IsWrittenAlsoWhereAFileHasOneNameOnly) {
  OneNameOnly operations;
  CreateFile(file, "contents", operations);
  EXPECT_EQ(ReadText(file), "contents");
  EXPECT_FALSE(fs::exists(folder / "new.kpf.tmp"));
}

TEST_F(CreatedFile, OverwritesNothingAlsoWhereAFileHasOneNameOnly) {
  OneNameOnly operations;
  WriteText(file, "old");
  EXPECT_TRUE(ErrorOf([&] { CreateFile(file, "contents", operations); }));
  EXPECT_EQ(ReadText(file), "old");
}

TEST(ReplacedFile, IsToldToBeNewWhenItsPreviousVersionCannotBePutBack) {
  const TemporaryFolder folder;
  const fs::path file = folder / "a.kpf";
  WriteText(file, "old");
  bool unsynced = false;
  StepOperations operations([&](Step step, Moment) {
    unsynced = unsynced || step == Step::SyncFolder;
    return unsynced ? std::make_error_code(std::errc::io_error) : std::error_code();
  });
  const auto error = ErrorOf([&] { ReplaceFile(file, "new", operations); });
  ASSERT_TRUE(error);
  EXPECT_NE(error->Description().find("the file may be the new one"), std::string::npos)
      << error->Description();
  EXPECT_EQ(ReadText(file), "new");
  EXPECT_EQ(ReadText(folder / "a.kpf.bak"), "old");
  EXPECT_FALSE(fs::exists(folder / "a.kpf.tmp"));
}

TEST(ReplacedFile, MayStandInTheCurrentFolder) {
  const TemporaryFolder folder;
  const fs::path before = fs::current_path();
  fs::current_path(folder.Path());
  WriteText("a.kpf", "old");
  SystemFileOperations operations;
  EXPECT_EQ(ReplaceFile("a.kpf", "new", operations), "a.kpf.bak");
  EXPECT_EQ(ReadText("a.kpf"), "new");
  fs::current_path(before);
}

}  // namespace
}  // namespace krnqb::files
