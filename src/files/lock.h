#pragma once

#include <filesystem>

#include "files/descriptor.h"
#include "files/operations.h"

namespace krnqb::files {

/// An exclusive lock that one import or undo holds on a plan. It is released when the object is destroyed or
/// the process ends, however it ends, so a killed one locks nobody out. The lock is taken on PLAN.lock beside
/// the plan. That file is never removed: otherwise one import could hold the removed file while another holds
/// a new one.
class PlanLock {
 public:
  /// Locks the plan; paths that reach the same plan through symbolic links share one lock. Throws Error
  /// without waiting if another process holds the lock, if the plan is missing, or if PLAN.lock cannot be
  /// created or is no regular file; a symbolic link of that name is not followed.
  explicit PlanLock(const std::filesystem::path& plan);
  /// Opens PLAN.lock with the given file operations.
  PlanLock(const std::filesystem::path& plan, FileOperations& operations);

 private:
  FileDescriptor lockFile_;
};

/// Throws Error as `PlanLock` does if it could not lock the plan now. Creates no file: a missing PLAN.lock is
/// free. To find out whether another process holds the lock, it is taken and released at once.
void RequireFreeLock(const std::filesystem::path& plan);

}  // namespace krnqb::files
