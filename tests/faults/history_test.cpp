#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <functional>

#include "faults/strides.h"
#include "files/operations.h"
#include "plan_file/history/testing.h"
#include "plan_file/history/versions.h"

// Imports and undos of which one call of the file system fails, reading ones included.

namespace krnqb::faults {
namespace {

using plan_file::ImportedPlan;
using plan_file::ImportVersion;
using plan_file::ReadText;
using plan_file::StateNow;
using plan_file::TemporaryFolder;
using plan_file::WholeVersion;
using tests::ErrorOf;

namespace fs = std::filesystem;

constexpr int everydayErrors[] = {EIO, ENOSPC};
constexpr int nightlyErrors[] = {EIO,    ENOSPC, EDQUOT, EACCES, EPERM,  EROFS, EMFILE,
                                 ENOMEM, EBUSY,  EFBIG,  ENOENT, EEXIST, EXDEV};

// Fails one call before it does its work, counted from 1.
class FailingOperations : public plan_file::UnflushedOperations {
 public:
  FailingOperations(int number, int error) : number_(number), error_(error) {}

  bool Struck() const noexcept { return calls_ >= number_; }

  std::error_code CheckWritable(const fs::path& file) override {
    return Around([&] { return UnflushedOperations::CheckWritable(file); });
  }
  std::error_code CreateTemporary(const fs::path& temporary, mode_t mode,
                                  files::FileDescriptor& file) override {
    return Around([&] { return UnflushedOperations::CreateTemporary(temporary, mode, file); });
  }
  std::error_code KeepOwnerAndMode(const files::FileDescriptor& file, const fs::path& pattern) override {
    return Around([&] { return UnflushedOperations::KeepOwnerAndMode(file, pattern); });
  }
  std::error_code Write(const files::FileDescriptor& file, std::string_view contents) override {
    return Around([&] { return UnflushedOperations::Write(file, contents); });
  }
  std::error_code Sync(const files::FileDescriptor& file) override {
    return Around([&] { return UnflushedOperations::Sync(file); });
  }
  std::error_code KeepPrevious(const fs::path& file, const fs::path& backup) override {
    return Around([&] { return UnflushedOperations::KeepPrevious(file, backup); });
  }
  std::error_code Rename(const fs::path& from, const fs::path& to) override {
    return Around([&] { return UnflushedOperations::Rename(from, to); });
  }
  std::error_code SyncFolder(const fs::path& folder) override {
    return Around([&] { return UnflushedOperations::SyncFolder(folder); });
  }
  std::error_code CreateFolder(const fs::path& folder, mode_t mode) override {
    return Around([&] { return UnflushedOperations::CreateFolder(folder, mode); });
  }
  std::error_code ListFolder(const fs::path& folder, std::vector<std::string>& names) override {
    return Around([&] { return UnflushedOperations::ListFolder(folder, names); });
  }
  std::error_code OpenForReading(const fs::path& file, files::FileDescriptor& opened) override {
    return Around([&] { return UnflushedOperations::OpenForReading(file, opened); });
  }
  std::error_code Read(const files::FileDescriptor& file, std::span<char> part,
                       std::size_t& length) override {
    return Around([&] { return UnflushedOperations::Read(file, part, length); });
  }

 private:
  template <typename Work>
  std::error_code Around(Work work) {
    if (++calls_ == number_) return {error_, std::generic_category()};
    return work();
  }

  int number_;
  int error_;
  int calls_ = 0;
};

class FailedCall : public testing::Test {
 protected:
  using Action = std::function<void(const fs::path& file, files::FileOperations& operations)>;
  using Check = std::function<void(const fs::path& file, const std::string& at)>;

  // Tries the action, which makes that many calls, on fresh copies of a plan of three imports, each time with
  // another failing call.
  void FailEverywhere(std::size_t calls, const Action& action, const Check& check) {
    std::size_t tried = 0;
    const std::span<const int> errors =
        Nightly() ? std::span<const int>(nightlyErrors) : std::span<const int>(everydayErrors);
    for (const int error : errors) {
      for (int number = 1;; ++number) {
        const TemporaryFolder copy;
        fs::copy(plan.folder.Path(), copy.Path(), fs::copy_options::recursive);
        const fs::path file = copy / "garden.kpf";
        const std::vector<std::string> names = NamesIn(copy.Path());
        FailingOperations operations(number, error);
        const auto failure = ErrorOf([&] { action(file, operations); });
        const std::string at = "call " + std::to_string(number) + ", error " + std::to_string(error);
        if (!operations.Struck()) {
          EXPECT_FALSE(failure);
          break;
        }
        ++tried;
        if (failure) {
          EXPECT_EQ(failure->Description().find('\n'), std::string::npos) << at;
          EXPECT_EQ(ReadText(file), plan.texts[3]) << at << ": " << failure->Description();
          EXPECT_EQ(NamesIn(copy.Path()), names) << at << ": " << failure->Description();
        }
        check(file, at + ": " + (failure ? failure->Description() : "no error"));
      }
    }
    EXPECT_EQ(tried, calls * errors.size());
    if (Nightly()) std::printf("%zu faults\n", tried);
  }

  static std::vector<std::string> NamesIn(const fs::path& folder) {
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
      names.push_back(fs::relative(entry.path(), folder));
    }
    std::ranges::sort(names);
    return names;
  }

  const ImportedPlan plan;
};

TEST_F(FailedCall, OfAnImportLosesNoVersion) {
  FailEverywhere(
      24, [](const fs::path& file, files::FileOperations& operations) { ImportVersion(file, 4, operations); },
      [&](const fs::path& file, const std::string& at) {
        const int version = WholeVersion(file).value_or(-1);
        ASSERT_TRUE(version == 3 || version == 4) << at;
        EXPECT_TRUE(StateNow(file).asWritten || version == 4) << at;
        ImportVersion(file, 5);
        plan_file::Undo(file);
        EXPECT_EQ(WholeVersion(file), version) << at;
        plan_file::Undo(file, 1);
        EXPECT_EQ(ReadText(file), plan.texts[0]) << at;
      });
}

TEST_F(FailedCall, OfAnUndoLosesNoVersion) {
  FailEverywhere(
      30, [](const fs::path& file, files::FileOperations& operations) { plan_file::Undo(file, operations); },
      [&](const fs::path& file, const std::string& at) {
        ASSERT_EQ(ReadText(file), plan.texts[3]) << at;
        plan_file::Undo(file);
        EXPECT_EQ(ReadText(file), plan.texts[2]) << at;
      });
}

TEST(FailedFirstImport, LeavesNoHistory) {
  int tried = 0;
  for (const int error : everydayErrors) {
    for (int number = 1;; ++number) {
      const TemporaryFolder folder;
      const fs::path file = folder / "garden.kpf";
      plan_file::WriteText(file, plan_file::SmallPlanText());
      FailingOperations operations(number, error);
      const auto failure = ErrorOf([&] { ImportVersion(file, 1, operations); });
      if (!operations.Struck()) break;
      ++tried;
      ASSERT_TRUE(failure) << number;
      EXPECT_EQ(ReadText(file), plan_file::SmallPlanText()) << number;
      EXPECT_FALSE(fs::exists(folder / "garden.kpf.history")) << number << ": " << failure->Description();
    }
  }
  EXPECT_GT(tried, 30);
}

}  // namespace
}  // namespace krnqb::faults
