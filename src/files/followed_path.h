#pragma once

#include <filesystem>

namespace krnqb::files {

/// Returns the absolute path of a plan with every symbolic link resolved, so that all paths to one plan give
/// the same result. Throws Error if the file is missing or cannot be reached.
std::filesystem::path FollowedPlanPath(const std::filesystem::path& plan);

}  // namespace krnqb::files
