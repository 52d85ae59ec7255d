#include "files/prepared_file.h"

#include <fmt/format.h>

#include <utility>

#include "files/fault.h"
#include "krnqb/error.h"
#include "support/path_text.h"

namespace krnqb::files {
namespace {

constexpr mode_t ownerOnly = 0600;

std::filesystem::path FolderOf(const std::filesystem::path& file) {
  return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

}  // namespace

PreparedFile::PreparedFile(std::filesystem::path file, FileOperations& operations)
    : file_(std::move(file)),
      temporary_(WithSuffix(file_, ".tmp")),
      previous_(WithSuffix(file_, ".previous")),
      operations_(operations) {
  Check(operations_.CreateTemporary(temporary_, ownerOnly, written_), "creating", temporary_);
}

PreparedFile::~PreparedFile() {
  if (!placed_) {
    operations_.Remove(temporary_);
    if (hasPrevious_) operations_.Remove(previous_);
  } else if (!kept_) {
    if (!hasPrevious_) {
      operations_.Remove(file_);
    } else {
      operations_.Rename(previous_, file_);
    }
  }
}

void PreparedFile::Write(std::string_view contents) {
  Check(operations_.Write(written_, contents), "writing", temporary_);
}

void PreparedFile::Place() {
  Check(operations_.Sync(written_), "flushing", temporary_);
  std::error_code unknown;
  if (std::filesystem::exists(file_, unknown)) {
    Check(operations_.KeepPrevious(file_, previous_), "keeping the previous version as", previous_);
    hasPrevious_ = true;
  }
  Check(operations_.Rename(temporary_, file_), "renaming", temporary_);
  placed_ = true;
  Check(operations_.SyncFolder(FolderOf(file_)), "flushing the folder", FolderOf(file_));
}

void PreparedFile::Keep() noexcept {
  kept_ = true;
  if (hasPrevious_) operations_.Remove(previous_);
}

void PreparedFile::Check(std::error_code failure, const char* step,
                         const std::filesystem::path& where) const {
  if (!failure) return;
  const std::string reason = failure == std::errc::device_or_resource_busy
                                 ? std::string("another program is writing it")
                                 : ReasonText(failure);
  throw Error(error_number::unspecified,
              fmt::format("cannot write {}: {} {} failed: {}; {}", TextOfPath(file_), step, TextOfPath(where),
                          reason, FileAdvice(failure)));
}

}  // namespace krnqb::files
