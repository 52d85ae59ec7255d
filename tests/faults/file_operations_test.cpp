#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>

#include "files/atomic_file.h"
#include "files/step_operations.h"
#include "plan_file/file.h"
#include "temporary_folder.h"
#include "thrown_error.h"

// Saving and creating files when one step fails, with every error that it can have.

namespace krnqb::faults {
namespace {

using files::Moment;
using files::Step;
using files::StepOperations;
using tests::ErrorOf;
using tests::ReadText;
using tests::TemporaryFolder;
using tests::WriteText;

namespace fs = std::filesystem;

constexpr int errors[] = {EIO,    ENOSPC, EDQUOT, EACCES, EPERM, EROFS,  EINTR,        EMFILE, ENFILE,
                          ENOMEM, EBUSY,  EFBIG,  ENOENT, ELOOP, EEXIST, ENAMETOOLONG, EXDEV,  EMLINK};

// Fails one step, counted from 1, before it does its work or in the middle of writing.
class FailingCall {
 public:
  FailingCall(int number, int error) : number_(number), error_(error) {}

  std::error_code operator()(Step /*step*/, Moment moment) {
    if (moment == Moment::After) return {};
    return ++calls_ == number_ ? std::error_code(error_, std::generic_category()) : std::error_code();
  }
  bool Struck() const noexcept { return calls_ >= number_; }

 private:
  int number_;
  int error_;
  int calls_ = 0;
};

TEST(FailedStep, OfASaveKeepsThePlanAndItsBackupWhole) {
  const TemporaryFolder folder;
  const fs::path file = folder / "garden.kpf";
  int tried = 0;
  for (const int error : errors) {
    for (int number = 1;; ++number) {
      // A save may leave both names on one file.
      fs::remove(folder / "garden.kpf.bak");
      WriteText(file, "old");
      WriteText(folder / "garden.kpf.bak", "older");
      FailingCall failing(number, error);
      StepOperations operations([&](Step step, Moment moment) { return failing(step, moment); });
      const auto failure = ErrorOf([&] { files::ReplaceFile(file, "new", operations); });
      if (!failing.Struck()) {
        EXPECT_FALSE(failure);
        EXPECT_EQ(ReadText(file), "new");
        break;
      }
      ++tried;
      const std::string at = "call " + std::to_string(number) + ", error " + std::to_string(error);
      ASSERT_TRUE(failure) << at;
      EXPECT_EQ(failure->Number(), error_number::unspecified) << at;
      EXPECT_TRUE(failure->Description().starts_with("cannot save " + file.string() + ": ")) << at;
      EXPECT_NE(failure->Description().find("; the file is unchanged, "), std::string::npos)
          << at << ": " << failure->Description();
      EXPECT_EQ(failure->Description().find('\n'), std::string::npos) << at;
      EXPECT_EQ(ReadText(file), "old") << at;
      const std::string backup = ReadText(folder / "garden.kpf.bak");
      EXPECT_TRUE(backup == "old" || backup == "older") << at << ": " << backup;
      EXPECT_EQ(folder.FileNames(), (std::vector<std::string>{"garden.kpf", "garden.kpf.bak"})) << at;
    }
  }
  EXPECT_EQ(tried, 9 * 18);
  if (std::getenv("KRNQB_NIGHTLY") != nullptr) std::printf("%d faults\n", tried);
}

TEST(FailedStep, OfANewFileLeavesNoFile) {
  int tried = 0;
  for (const int error : errors) {
    for (int number = 1;; ++number) {
      const TemporaryFolder folder;
      const fs::path file = folder / "new.kpf";
      FailingCall failing(number, error);
      StepOperations operations([&](Step step, Moment moment) { return failing(step, moment); });
      const auto failure = ErrorOf([&] { files::CreateFile(file, "contents", operations); });
      if (!failing.Struck()) break;
      ++tried;
      EXPECT_TRUE(failure) << "call " << number << ", error " << error;
      EXPECT_EQ(folder.FileNames(), std::vector<std::string>()) << "call " << number << ", error " << error;
    }
  }
  EXPECT_EQ(tried, 6 * 18);
}

TEST(FailedStep, OfAPlanLeavesItToBeSavedAgain) {
  const TemporaryFolder folder;
  const fs::path file = folder / "garden.kpf";
  plan_file::PlanFile::Create(file, QBKRN_COR, {2003, 1});
  for (const int error : errors) {
    for (int number = 1;; ++number) {
      const auto plan = plan_file::PlanFile::Open(file);
      const std::string before = ReadText(file);
      FailingCall failing(number, error);
      StepOperations operations([&](Step step, Moment moment) { return failing(step, moment); });
      const auto failure = ErrorOf([&] { plan->Save(operations); });
      if (!failing.Struck()) break;
      ASSERT_TRUE(failure) << "call " << number << ", error " << error;
      EXPECT_EQ(ReadText(file), before) << "call " << number << ", error " << error;
      if (number % 4 == 1) {
        EXPECT_FALSE(ErrorOf([&] { plan_file::PlanFile::Open(file)->Save(); })) << "call " << number;
      }
    }
  }
}

}  // namespace
}  // namespace krnqb::faults
