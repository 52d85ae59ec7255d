#include "files/atomic_file.h"

#include <fmt/format.h>

#include "files/fault.h"
#include "krnqb/error.h"

namespace krnqb::files {
namespace {

namespace fs = std::filesystem;

constexpr mode_t ownerOnly = 0600;  // until the permissions of the file that is replaced are known to be kept
constexpr mode_t asUsual = 0666;    // less what the person's mask takes away

fs::path FolderOf(const fs::path& file) {
  return file.has_parent_path() ? file.parent_path() : fs::path(".");
}

// A temporary file that is removed again unless it got its final name.
class TemporaryName {
 public:
  TemporaryName(fs::path temporary, FileOperations& operations)
      : name_(std::move(temporary)), operations_(operations) {}
  TemporaryName(const TemporaryName&) = delete;
  TemporaryName& operator=(const TemporaryName&) = delete;
  ~TemporaryName() {
    if (!name_.empty()) operations_.Remove(name_);
  }
  void Renamed() noexcept { name_.clear(); }

 private:
  fs::path name_;
  FileOperations& operations_;
};

// Turns the failure of a step into the error that a person reads.
class Steps {
 public:
  Steps(std::string_view purpose, std::string_view state, const fs::path& target)
      : purpose_(purpose), state_(state), file_(target) {}

  void Check(std::error_code failure, std::string_view step, const fs::path& where) const {
    if (!failure) return;
    throw Error(error_number::unspecified,
                fmt::format("{} {}: {} {} failed: {}; {}, {}", purpose_, file_.string(), step, where.string(),
                            Reason(failure), state_, FileAdvice(failure)));
  }

 private:
  static std::string Reason(std::error_code failure) {
    if (failure == std::errc::device_or_resource_busy) return "another program is writing it";
    return failure.message();
  }

  std::string_view purpose_;
  std::string_view state_;
  const fs::path& file_;
};

// The names on the disk could not be made sure of, so the previous version gets its name back.
bool PutBack(const fs::path& previousVersion, const fs::path& file, FileOperations& operations) {
  const fs::path secondName = BesideFile(file, ".tmp");
  const bool done =
      !operations.KeepPrevious(previousVersion, secondName) && !operations.Rename(secondName, file);
  operations.Remove(secondName);
  return done;
}

void WriteTemporary(const FileDescriptor& written, const fs::path& temporary, std::string_view contents,
                    const Steps& steps, FileOperations& operations) {
  steps.Check(operations.Write(written, contents), "writing", temporary);
  steps.Check(operations.Sync(written), "bringing to the disk", temporary);
}

}  // namespace

fs::path ReplaceFile(const fs::path& file, std::string_view contents, FileOperations& operations) {
  const fs::path temporary = BesideFile(file, ".tmp");
  fs::path backup = BesideFile(file, ".bak");
  const fs::path folder = FolderOf(file);
  const Steps steps("cannot save", "the file is as it was", file);

  steps.Check(operations.CheckWritable(file), "changing", file);
  FileDescriptor written;
  steps.Check(operations.CreateTemporary(temporary, ownerOnly, written), "creating", temporary);
  TemporaryName name(temporary, operations);
  steps.Check(operations.KeepOwnerAndMode(written, file), "setting the permissions of", temporary);
  WriteTemporary(written, temporary, contents, steps, operations);
  steps.Check(operations.KeepPrevious(file, backup), "keeping the previous version as", backup);
  steps.Check(operations.Rename(temporary, file), "giving its name to", temporary);
  name.Renamed();

  if (const std::error_code failure = operations.SyncFolder(folder)) {
    const bool restored = PutBack(backup, file, operations);
    const Steps lastStep("cannot save", restored ? "the file is as it was" : "the file may be the new one",
                         file);
    lastStep.Check(failure, "bringing to the disk the folder", folder);
  }
  return backup;
}

void CreateFile(const fs::path& file, std::string_view contents, FileOperations& operations) {
  const fs::path temporary = BesideFile(file, ".tmp");
  const fs::path folder = FolderOf(file);
  const Steps steps("cannot create", "there is no new file", file);

  FileDescriptor written;
  steps.Check(operations.CreateTemporary(temporary, asUsual, written), "creating", temporary);
  TemporaryName name(temporary, operations);
  WriteTemporary(written, temporary, contents, steps, operations);
  const std::error_code failure = operations.RenameToNew(temporary, file);
  if (failure == std::errc::file_exists) {
    throw Error(
        error_number::unspecified,
        fmt::format("cannot create {}: there is a file of that name already, and it is not overwritten; "
                    "choose another name or move that file away",
                    file.string()));
  }
  steps.Check(failure, "giving its name to", temporary);
  name.Renamed();
  if (const std::error_code unsynced = operations.SyncFolder(folder)) {
    operations.Remove(file);
    steps.Check(unsynced, "bringing to the disk the folder", folder);
  }
}

}  // namespace krnqb::files
