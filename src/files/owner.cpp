#include "files/owner.h"

#include <sys/stat.h>
#include <unistd.h>

namespace krnqb::files {

void KeepOwner(const FileDescriptor& file, const std::filesystem::path& pattern) noexcept {
  struct stat kept {};
  if (!file || ::stat(pattern.c_str(), &kept) != 0 || kept.st_uid == ::geteuid()) return;
  const bool done = ::fchown(file.Number(), kept.st_uid, kept.st_gid) == 0;
  static_cast<void>(done);
}

}  // namespace krnqb::files
