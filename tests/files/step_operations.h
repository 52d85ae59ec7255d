#pragma once

#include <array>
#include <functional>
#include <string_view>
#include <system_error>

#include "files/operations.h"

namespace krnqb::files {

/// The steps of replacing a file, in order, and then that of creating a folder.
enum class Step {
  CheckWritable,
  CreateTemporary,
  KeepOwnerAndMode,
  Write,
  Sync,
  KeepPrevious,
  Rename,
  SyncFolder,
  CreateFolder
};

inline constexpr std::array<std::string_view, 9> stepNames{
    "CheckWritable", "CreateTemporary", "KeepOwnerAndMode", "Write",       "Sync",
    "KeepPrevious",  "Rename",          "SyncFolder",       "CreateFolder"};

enum class Moment { Before, During, After };

inline constexpr std::array<std::string_view, 3> momentNames{"Before", "During", "After"};

/// System file operations that call a test's action before and after each step, and halfway through writing.
/// If the action returns an error, the step fails with it.
class StepOperations : public SystemFileOperations {
 public:
  using Action = std::function<std::error_code(Step, Moment)>;

  explicit StepOperations(Action action) : action_(std::move(action)) {}

  std::error_code CheckWritable(const std::filesystem::path& file) override {
    return Around(Step::CheckWritable, [&] { return SystemFileOperations::CheckWritable(file); });
  }
  std::error_code CreateTemporary(const std::filesystem::path& temporary, mode_t mode,
                                  FileDescriptor& file) override {
    return Around(Step::CreateTemporary,
                  [&] { return SystemFileOperations::CreateTemporary(temporary, mode, file); });
  }
  std::error_code KeepOwnerAndMode(const FileDescriptor& file,
                                   const std::filesystem::path& pattern) override {
    return Around(Step::KeepOwnerAndMode,
                  [&] { return SystemFileOperations::KeepOwnerAndMode(file, pattern); });
  }
  std::error_code Write(const FileDescriptor& file, std::string_view contents) override {
    return Around(Step::Write, [&] {
      const std::size_t half = contents.size() / 2;
      std::error_code failure = SystemFileOperations::Write(file, contents.substr(0, half));
      if (!failure) failure = action_(Step::Write, Moment::During);
      return failure ? failure : SystemFileOperations::Write(file, contents.substr(half));
    });
  }
  std::error_code Sync(const FileDescriptor& file) override {
    return Around(Step::Sync, [&] { return SystemFileOperations::Sync(file); });
  }
  std::error_code KeepPrevious(const std::filesystem::path& file,
                               const std::filesystem::path& backup) override {
    return Around(Step::KeepPrevious, [&] { return SystemFileOperations::KeepPrevious(file, backup); });
  }
  std::error_code Rename(const std::filesystem::path& from, const std::filesystem::path& to) override {
    return Around(Step::Rename, [&] { return SystemFileOperations::Rename(from, to); });
  }
  std::error_code RenameToNew(const std::filesystem::path& from, const std::filesystem::path& to) override {
    return Around(Step::Rename, [&] { return SystemFileOperations::RenameToNew(from, to); });
  }
  std::error_code SyncFolder(const std::filesystem::path& folder) override {
    return Around(Step::SyncFolder, [&] { return SystemFileOperations::SyncFolder(folder); });
  }
  std::error_code CreateFolder(const std::filesystem::path& folder, mode_t mode) override {
    return Around(Step::CreateFolder, [&] { return SystemFileOperations::CreateFolder(folder, mode); });
  }

 private:
  template <typename Work>
  std::error_code Around(Step step, Work work) {
    if (const std::error_code failure = action_(step, Moment::Before)) return failure;
    if (const std::error_code failure = work()) return failure;
    return action_(step, Moment::After);
  }

  Action action_;
};

}  // namespace krnqb::files
