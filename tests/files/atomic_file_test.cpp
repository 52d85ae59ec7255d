#include "files/atomic_file.h"

#include <gtest/gtest.h>

#include "files/step_operations.h"
#include "temporary_folder.h"
#include "thrown_error.h"

namespace krnqb::files {
namespace {

using tests::ErrorOf;
using tests::ReadText;
using tests::TemporaryFolder;
using tests::WriteText;

namespace fs = std::filesystem;

class CreatedFile : public testing::Test {
 protected:
  TemporaryFolder folder;
  fs::path file = folder / "new.kpf";
};

TEST_F(CreatedFile, AppearsWithItsWholeContents) {
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

TEST_F(CreatedFile, DoesNotExistAfterAFailedStep) {
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

class NoHardLinks : public SystemFileOperations {
  std::error_code AddName(const fs::path& /*file*/, const fs::path& /*name*/) override {
    return std::make_error_code(std::errc::operation_not_permitted);
  }
};

TEST_F(CreatedFile, NeedsNoHardLinks) {
  NoHardLinks operations;
  CreateFile(file, "contents", operations);
  EXPECT_EQ(ReadText(file), "contents");
  EXPECT_FALSE(fs::exists(folder / "new.kpf.tmp"));
}

TEST_F(CreatedFile, OverwritesNothingWithoutHardLinks) {
  NoHardLinks operations;
  WriteText(file, "old");
  EXPECT_TRUE(ErrorOf([&] { CreateFile(file, "contents", operations); }));
  EXPECT_EQ(ReadText(file), "old");
}

TEST(ReplacedFile, IsReportedAsNewIfThePreviousVersionCannotBeRestored) {
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
  EXPECT_NE(error->Description().find("the file may hold the new version"), std::string::npos)
      << error->Description();
  EXPECT_EQ(ReadText(file), "new");
  EXPECT_EQ(ReadText(folder / "a.kpf.bak"), "old");
  EXPECT_FALSE(fs::exists(folder / "a.kpf.tmp"));
}

TEST(ReplacedFile, LeavesNoTemporaryFileIfThePreviousVersionCannotBeRestored) {
  const TemporaryFolder folder;
  const fs::path file = folder / "a.kpf";
  WriteText(file, "old");
  int renames = 0;
  StepOperations operations([&](Step step, Moment moment) {
    const bool restoring = step == Step::Rename && moment == Moment::Before && ++renames == 2;
    return step == Step::SyncFolder || restoring ? std::make_error_code(std::errc::io_error)
                                                 : std::error_code();
  });
  EXPECT_TRUE(ErrorOf([&] { ReplaceFile(file, "new", operations); }));
  EXPECT_EQ(renames, 2);
  EXPECT_EQ(folder.FileNames(), (std::vector<std::string>{"a.kpf", "a.kpf.bak"}));
}

TEST(ReplacedFile, MayBeInTheCurrentFolder) {
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
