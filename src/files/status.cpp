#include "files/status.h"

#include <sys/stat.h>

#include "files/fault.h"

namespace krnqb::files {
namespace {

FileType TypeFrom(mode_t mode) noexcept {
  if (S_ISREG(mode)) return FileType::Regular;
  if (S_ISDIR(mode)) return FileType::Folder;
  if (S_ISFIFO(mode)) return FileType::Pipe;
  if (S_ISCHR(mode)) return FileType::CharacterDevice;
  return S_ISBLK(mode) ? FileType::BlockDevice : FileType::Other;
}

FileStatus StatusFrom(const struct stat& status) noexcept {
  return {.type = TypeFrom(status.st_mode),
          .stamp = {.device = status.st_dev,
                    .number = status.st_ino,
                    .size = status.st_size,
                    .seconds = status.st_mtim.tv_sec,
                    .nanoseconds = status.st_mtim.tv_nsec}};
}

}  // namespace

std::error_code StatusOf(const std::filesystem::path& file, FileStatus& status) noexcept {
  struct stat found {};
  if (::stat(file.c_str(), &found) != 0) return LastSystemError();
  status = StatusFrom(found);
  return {};
}

std::error_code StatusOf(int descriptor, FileStatus& status) noexcept {
  struct stat found {};
  if (::fstat(descriptor, &found) != 0) return LastSystemError();
  status = StatusFrom(found);
  return {};
}

std::optional<FileStamp> StampOf(const std::filesystem::path& file) noexcept {
  FileStatus status;
  return StatusOf(file, status) ? std::nullopt : std::optional(status.stamp);
}

std::string ComparedName(const std::filesystem::path& file) {
  return file.filename().native();
}

}  // namespace krnqb::files
