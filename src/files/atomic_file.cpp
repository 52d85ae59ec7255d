#include "files/atomic_file.h"

#include <fmt/format.h>

#include <utility>

#include "files/fault.h"
#include "krnqb/error.h"
#include "support/path_text.h"

namespace krnqb::files {
namespace {

namespace fs = std::filesystem;

constexpr mode_t ownerOnly = 0600;    // until the replaced file's permissions are set
constexpr mode_t defaultMode = 0666;  // restricted by the user's umask

fs::path FolderOf(const fs::path& file) {
  return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

// Removes a temporary file unless it has been renamed to its final name.
class TemporaryFile {
 public:
  TemporaryFile(fs::path name, FileOperations& operations)
      : name_(std::move(name)), operations_(operations) {}
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() {
    if (!name_.empty()) operations_.Remove(name_);
  }
  void Renamed() noexcept { name_.clear(); }

 private:
  fs::path name_;
  FileOperations& operations_;
};

// Turns a failed step into the error shown to the user.
class Steps {
 public:
  Steps(std::string_view purpose, std::string_view state, const fs::path& file)
      : purpose_(purpose), state_(state), file_(file) {}

  void Check(std::error_code failure, std::string_view step, const fs::path& where) const {
    if (!failure) return;
    throw Error(error_number::unspecified,
                fmt::format("{} {}: {} {} failed: {}; {}, {}", purpose_, TextOfPath(file_), step,
                            TextOfPath(where), Reason(failure), state_, FileAdvice(failure)));
  }

 private:
  static std::string Reason(std::error_code failure) {
    if (failure == std::errc::device_or_resource_busy) return "another program is writing it";
    return ReasonText(failure);
  }

  std::string_view purpose_;
  std::string_view state_;
  const fs::path& file_;
};

// Restores the previous version under the file's name; false if that fails too.
bool PutBack(const fs::path& previousVersion, const fs::path& file, FileOperations& operations) {
  const fs::path secondName = WithSuffix(file, ".tmp");
  const bool done =
      !operations.KeepPrevious(previousVersion, secondName) && !operations.Rename(secondName, file);
  operations.Remove(secondName);
  return done;
}

void WriteTemporary(const FileDescriptor& written, const fs::path& temporary, std::string_view contents,
                    const Steps& steps, FileOperations& operations) {
  steps.Check(operations.Write(written, contents), "writing", temporary);
  steps.Check(operations.Sync(written), "flushing", temporary);
}

// Replaces the file by one that `fill` fills; it is given the open temporary file, its name and the steps.
template <typename Fill>
fs::path Replace(const fs::path& file, FileOperations& operations, Fill&& fill) {
  const fs::path temporary = WithSuffix(file, ".tmp");
  fs::path backup = WithSuffix(file, ".bak");
  const fs::path folder = FolderOf(file);
  const Steps steps("cannot save", "the file is unchanged", file);

  steps.Check(operations.CheckWritable(file), "changing", file);
  FileDescriptor written;
  steps.Check(operations.CreateTemporary(temporary, ownerOnly, written), "creating", temporary);
  TemporaryFile unfinished(temporary, operations);
  steps.Check(operations.KeepOwnerAndMode(written, file), "setting the permissions of", temporary);
  std::forward<Fill>(fill)(written, temporary, steps);
  steps.Check(operations.KeepPrevious(file, backup), "keeping the previous version as", backup);
  steps.Check(operations.Rename(temporary, file), "renaming", temporary);
  unfinished.Renamed();

  if (const std::error_code failure = operations.SyncFolder(folder)) {
    const bool restored = PutBack(backup, file, operations);
    const Steps lastStep("cannot save",
                         restored ? "the file is unchanged" : "the file may hold the new version", file);
    lastStep.Check(failure, "flushing the folder", folder);
  }
  return backup;
}

}  // namespace

fs::path ReplaceFile(const fs::path& file, std::string_view contents, FileOperations& operations) {
  return Replace(file, operations,
                 [&](const FileDescriptor& written, const fs::path& temporary, const Steps& steps) {
                   WriteTemporary(written, temporary, contents, steps, operations);
                 });
}

fs::path ReplaceFile(const fs::path& file, const std::function<void(const fs::path& temporary)>& write,
                     FileOperations& operations) {
  return Replace(file, operations,
                 [&](const FileDescriptor& written, const fs::path& temporary, const Steps& steps) {
                   write(temporary);
                   steps.Check(operations.Sync(written), "flushing", temporary);
                 });
}

void CreateFile(const fs::path& file, std::string_view contents, FileOperations& operations) {
  const fs::path temporary = WithSuffix(file, ".tmp");
  const fs::path folder = FolderOf(file);
  const Steps steps("cannot create", "there is no new file", file);

  FileDescriptor written;
  steps.Check(operations.CreateTemporary(temporary, defaultMode, written), "creating", temporary);
  TemporaryFile unfinished(temporary, operations);
  WriteTemporary(written, temporary, contents, steps, operations);
  const std::error_code failure = operations.RenameToNew(temporary, file);
  if (failure == std::errc::file_exists) {
    throw Error(error_number::unspecified,
                fmt::format("cannot create {}: a file of that name already exists and is not overwritten; "
                            "choose another name or move that file away",
                            TextOfPath(file)));
  }
  steps.Check(failure, "renaming", temporary);
  unfinished.Renamed();
  if (const std::error_code unsynced = operations.SyncFolder(folder)) {
    operations.Remove(file);
    steps.Check(unsynced, "flushing the folder", folder);
  }
}

}  // namespace krnqb::files
