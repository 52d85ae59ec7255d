#include "files/lock.h"

#include <fmt/format.h>

#include "files/fault.h"
#include "files/followed_path.h"
#include "krnqb/error.h"
#include "support/path_text.h"

namespace krnqb::files {
namespace {

FileDescriptor OpenLockFile(const std::filesystem::path& lockFile, FileOperations& operations) {
  constexpr std::string_view failed = "cannot lock the plan with";
  constexpr std::string_view remove = "move it away and try again";
  FileDescriptor opened;
  const std::error_code failure = operations.OpenLockFile(lockFile, opened);
  if (failure == std::errc::too_many_symbolic_link_levels) {
    throw FileError(failed, lockFile, "it is a symbolic link", remove);
  }
  if (failure == std::errc::invalid_argument) {
    throw FileError(failed, lockFile, "it is not a regular file", remove);
  }
  if (failure) throw FileError(failed, lockFile, failure);
  return opened;
}

FileDescriptor OpenLockFile(const std::filesystem::path& lockFile) {
  SystemFileOperations operations;
  return OpenLockFile(lockFile, operations);
}

std::filesystem::path LockFileOf(const std::filesystem::path& plan) {
  return WithSuffix(FollowedPlanPath(plan), ".lock");
}

}  // namespace

PlanLock::PlanLock(const std::filesystem::path& plan) : lockFile_(OpenLockFile(LockFileOf(plan))) {
  Claim(plan);
}

PlanLock::PlanLock(const std::filesystem::path& plan, FileOperations& operations)
    : lockFile_(OpenLockFile(LockFileOf(plan), operations)) {
  Claim(plan);
}

void PlanLock::Claim(const std::filesystem::path& plan) const {
  const std::error_code failure = lockFile_.Lock();
  if (!failure) return;
  if (failure != std::errc::device_or_resource_busy) throw FileError("cannot lock the plan", plan, failure);
  throw Error(
      error_number::unspecified,
      fmt::format("cannot change the plan {}: another import or undo is changing it; wait until that has "
                  "ended and try again",
                  TextOfPath(plan)));
}

}  // namespace krnqb::files
