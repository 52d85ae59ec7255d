#include "files/followed_path.h"

#include "files/fault.h"

namespace krnqb::files {

std::filesystem::path FollowedPlanPath(const std::filesystem::path& plan) {
  std::error_code failure;
  std::filesystem::path followed = std::filesystem::canonical(plan, failure);
  if (failure) throw FileError("cannot open the plan", plan, failure);
  return followed;
}

}  // namespace krnqb::files
