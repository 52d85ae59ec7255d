#include "files/owner.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace krnqb::files {

void KeepOwner(const FileDescriptor& file, const std::filesystem::path& pattern) noexcept {
  struct stat kept {};
  if (!file || ::stat(pattern.c_str(), &kept) != 0 || kept.st_uid == ::geteuid()) return;
  const bool done = ::fchown(file.Number(), kept.st_uid, kept.st_gid) == 0;
  static_cast<void>(done);
}

void KeepFolderOwner(const std::filesystem::path& folder, const std::filesystem::path& pattern) noexcept {
  KeepOwner(FileDescriptor::Open(folder, O_RDONLY | O_DIRECTORY | O_NOFOLLOW), pattern);
}

}  // namespace krnqb::files
