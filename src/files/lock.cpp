#include "files/lock.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sys/file.h>

#include <cerrno>

#include "files/fault.h"
#include "files/followed_path.h"
#include "krnqb/error.h"

namespace krnqb::files {
namespace {

FileDescriptor OpenLockFile(const std::filesystem::path& lockFile) {
  FileDescriptor opened = FileDescriptor::Open(lockFile, O_RDWR | O_CREAT, 0666);
  // Locking another user's lock file needs no write permission.
  if (!opened && (errno == EACCES || errno == EROFS)) {
    opened = FileDescriptor::Open(lockFile, O_RDONLY);
  }
  if (!opened) throw FileError("cannot lock the plan with", lockFile, LastSystemError());
  return opened;
}

}  // namespace

PlanLock::PlanLock(const std::filesystem::path& plan)
    : lockFile_(OpenLockFile(WithSuffix(FollowedPlanPath(plan), ".lock"))) {
  if (::flock(lockFile_.Number(), LOCK_EX | LOCK_NB) == 0) return;
  if (errno != EWOULDBLOCK) throw FileError("cannot lock the plan", plan, LastSystemError());
  throw Error(
      error_number::unspecified,
      fmt::format("cannot import into the plan {}: another import is changing it; wait until that import has "
                  "ended and try again",
                  plan.string()));
}

}  // namespace krnqb::files
