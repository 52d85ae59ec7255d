#include "files/lock.h"

#include <fmt/format.h>

#include "files/fault.h"
#include "files/followed_path.h"
#include "krnqb/error.h"
#include "support/path_text.h"

namespace krnqb::files {
namespace {

[[noreturn]] void FailToOpen(const std::filesystem::path& lockFile, std::error_code failure) {
  constexpr std::string_view failed = "cannot lock the plan with";
  constexpr std::string_view remove = "move it away and try again";
  if (failure == std::errc::too_many_symbolic_link_levels) {
    throw FileError(failed, lockFile, "it is a symbolic link", remove);
  }
  if (failure == std::errc::invalid_argument) {
    throw FileError(failed, lockFile, "it is not a regular file", remove);
  }
  throw FileError(failed, lockFile, failure);
}

FileDescriptor OpenLockFile(const std::filesystem::path& lockFile, FileOperations& operations) {
  FileDescriptor opened;
  if (const std::error_code failure = operations.OpenLockFile(lockFile, opened))
    FailToOpen(lockFile, failure);
  return opened;
}

FileDescriptor OpenLockFile(const std::filesystem::path& lockFile) {
  SystemFileOperations operations;
  return OpenLockFile(lockFile, operations);
}

std::filesystem::path LockFileOf(const std::filesystem::path& plan) {
  return WithSuffix(FollowedPlanPath(plan), ".lock");
}

void Claim(const FileDescriptor& lockFile, const std::filesystem::path& plan) {
  const std::error_code failure = lockFile.Lock();
  if (!failure) return;
  if (failure != std::errc::device_or_resource_busy) throw FileError("cannot lock the plan", plan, failure);
  throw Error(
      error_number::unspecified,
      fmt::format("cannot change the plan {}: another import or undo is changing it; wait until that has "
                  "ended and try again",
                  TextOfPath(plan)));
}

// Opens PLAN.lock if it exists; nothing is created.
FileDescriptor OpenPresentLockFile(const std::filesystem::path& lockFile) {
  std::error_code unknown;
  const auto type = std::filesystem::symlink_status(lockFile, unknown).type();
  if (type == std::filesystem::file_type::not_found) return {};
  if (type == std::filesystem::file_type::symlink)
    FailToOpen(lockFile, std::make_error_code(std::errc::too_many_symbolic_link_levels));
  if (type != std::filesystem::file_type::regular && type != std::filesystem::file_type::none)
    FailToOpen(lockFile, std::make_error_code(std::errc::invalid_argument));
  FileDescriptor opened;
  SystemFileOperations operations;
  if (const std::error_code failure = operations.OpenForReading(lockFile, opened))
    FailToOpen(lockFile, failure);
  return opened;
}

}  // namespace

PlanLock::PlanLock(const std::filesystem::path& plan) : lockFile_(OpenLockFile(LockFileOf(plan))) {
  Claim(lockFile_, plan);
}

PlanLock::PlanLock(const std::filesystem::path& plan, FileOperations& operations)
    : lockFile_(OpenLockFile(LockFileOf(plan), operations)) {
  Claim(lockFile_, plan);
}

void RequireFreeLock(const std::filesystem::path& plan) {
  if (const FileDescriptor lockFile = OpenPresentLockFile(LockFileOf(plan))) Claim(lockFile, plan);
}

}  // namespace krnqb::files
