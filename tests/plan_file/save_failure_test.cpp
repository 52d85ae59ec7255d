#include <gtest/gtest.h>
#include <sys/stat.h>

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
using files::StepOperations;

namespace fs = std::filesystem;

struct FailingStep {
  Step step;
  Moment moment;
  const char* phrase;
};

class FailedSave : public testing::TestWithParam<FailingStep> {
 protected:
  FailedSave() : file(folder / "garden.kpf") { WriteText(file, SmallPlanText()); }

  TemporaryFolder folder;
  fs::path file;
};

TEST_P(FailedSave, KeepsTheOldPlanRemovesTheTemporaryFileAndCanBeRetried) {
  const FailingStep& failing = GetParam();
  StepOperations operations([&](Step step, Moment moment) {
    const bool fails = step == failing.step && moment == failing.moment;
    return fails ? std::make_error_code(std::errc::no_space_on_device) : std::error_code();
  });
  const auto plan = PlanFile::Open(file);
  MarkVersion(*plan, 1);
  const auto error = ErrorOf([&] { plan->Save(operations); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Description().find("cannot save " + file.string() + ": " + failing.phrase), 0U)
      << error->Description();
  EXPECT_NE(error->Description().find(
                "failed: No space left on device; the file is unchanged, free some disk space "
                "and try again"),
            std::string::npos)
      << error->Description();
  EXPECT_EQ(ReadText(file), SmallPlanText());
  EXPECT_FALSE(fs::exists(folder / "garden.kpf.tmp"));
  EXPECT_FALSE(fs::exists(folder / "garden.kpf.bak.tmp"));
  EXPECT_TRUE(plan->Changed());

  plan->Save();
  EXPECT_EQ(WholeVersion(file), 1);
  EXPECT_EQ(ReadText(folder / "garden.kpf.bak"), SmallPlanText());
}

INSTANTIATE_TEST_SUITE_P(
    PlanSave, FailedSave,
    testing::Values(FailingStep{Step::CheckWritable, Moment::Before, "changing"},
                    FailingStep{Step::CreateTemporary, Moment::Before, "creating"},
                    FailingStep{Step::KeepOwnerAndMode, Moment::Before, "setting the permissions of"},
                    FailingStep{Step::KeepOwnerAndMode, Moment::After, "setting the permissions of"},
                    FailingStep{Step::Write, Moment::Before, "writing"},
                    FailingStep{Step::Write, Moment::During, "writing"},
                    FailingStep{Step::Write, Moment::After, "writing"},
                    FailingStep{Step::Sync, Moment::Before, "flushing"},
                    FailingStep{Step::Sync, Moment::After, "flushing"},
                    FailingStep{Step::KeepPrevious, Moment::Before, "keeping the previous version as"},
                    FailingStep{Step::KeepPrevious, Moment::After, "keeping the previous version as"},
                    FailingStep{Step::Rename, Moment::Before, "renaming"},
                    FailingStep{Step::SyncFolder, Moment::Before, "flushing the folder"},
                    FailingStep{Step::SyncFolder, Moment::After, "flushing the folder"}),
    [](const testing::TestParamInfo<FailingStep>& test) {
      return std::string(stepNames[static_cast<std::size_t>(test.param.step)]) +
             std::string(momentNames[static_cast<std::size_t>(test.param.moment)]);
    });

class RefusedSave : public testing::Test {
 protected:
  RefusedSave() : file(folder / "garden.kpf") { WriteText(file, SmallPlanText()); }

  std::string FailureOfChild(const std::string& how) {
    WriteProcess child({how, file.string()});
    std::string description = child.ReadLine();
    EXPECT_EQ(child.Wait(), 3) << description;
    EXPECT_EQ(ReadText(file), SmallPlanText());
    EXPECT_FALSE(fs::exists(folder / "garden.kpf.tmp"));
    return description;
  }

  TemporaryFolder folder;
  fs::path file;
};

TEST_F(RefusedSave, NamesAFolderThatCannotBeWritten) {
  ASSERT_EQ(::chmod(file.c_str(), 0666), 0);
  ASSERT_EQ(::chmod(folder.Path().c_str(), 0555), 0);
  EXPECT_EQ(FailureOfChild("unprivileged"), "cannot save " + file.string() + ": creating " + file.string() +
                                                ".tmp failed: Permission denied; the file is unchanged, "
                                                "make sure that you have permission to use "
                                                "the file and its folder");
}

TEST_F(RefusedSave, NamesAWriteProtectedPlan) {
  ASSERT_EQ(::chmod(file.c_str(), 0444), 0);
  ASSERT_EQ(::chmod(folder.Path().c_str(), 0777), 0);
  EXPECT_EQ(FailureOfChild("unprivileged"),
            "cannot save " + file.string() + ": changing " + file.string() +
                " failed: Permission denied; the file is unchanged, make sure that you have permission "
                "to use the file and its folder");
}

TEST_F(RefusedSave, ReportsAFileSizeLimit) {
  EXPECT_EQ(FailureOfChild("limited"),
            "cannot save " + file.string() + ": writing " + file.string() +
                ".tmp failed: File too large; the file is unchanged, raise the limit of "
                "the size of files (ulimit -f) and try again");
}

TEST_F(RefusedSave, KeepsTheChangesOfAnotherProgram) {
  const auto plan = PlanFile::Open(file);
  MarkVersion(*plan, 1);
  WriteText(file, "<plan><tables><!-- of another program --></tables></plan>");
  const auto error = ErrorOf([&] { plan->Save(); });
  ASSERT_TRUE(error);
  EXPECT_NE(error->Description().find("another program has changed or moved it"), std::string::npos);
  EXPECT_EQ(ReadText(file), "<plan><tables><!-- of another program --></tables></plan>");
}

TEST_F(RefusedSave, DoesNotRecreateARemovedPlan) {
  const auto plan = PlanFile::Open(file);
  fs::remove(file);
  const auto error = ErrorOf([&] { plan->Save(); });
  ASSERT_TRUE(error);
  EXPECT_NE(error->Description().find("another program has changed or moved it"), std::string::npos);
  EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST_F(RefusedSave, DoesNotDisturbASaveInProgress) {
  const auto first = PlanFile::Open(file);
  MarkVersion(*first, 1);
  std::optional<Error> second;
  StepOperations operations([&](Step step, Moment moment) -> std::error_code {
    if (step == Step::Sync && moment == Moment::Before)
      second = ErrorOf([&] { PlanFile::Open(file)->Save(); });
    return {};
  });
  first->Save(operations);
  ASSERT_TRUE(second);
  EXPECT_NE(second->Description().find("another program is writing it"), std::string::npos)
      << second->Description();
  EXPECT_EQ(WholeVersion(file), 1);
}

}  // namespace
}  // namespace krnqb::plan_file
