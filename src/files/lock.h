#pragma once

#include <filesystem>

#include "files/descriptor.h"

namespace krnqb::files {

/// One import's claim to a plan. The claim ends with the object or, however it ends, with the process, so a
/// killed import locks nobody out. It stands on PLAN.lock beside the plan, which stays there: if it were
/// removed, one import could hold the removed file and another one a new file of that name, both at once.
class PlanLock {
 public:
  /// Claims the plan of that path; paths that lead to the same plan by symbolic links share one claim. Error,
  /// at once, when another import has it; Error when there is no such plan or no PLAN.lock can be made beside
  /// it.
  explicit PlanLock(const std::filesystem::path& plan);

 private:
  FileDescriptor claimed_;
};

}  // namespace krnqb::files
