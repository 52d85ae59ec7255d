#pragma once

#include <filesystem>

namespace krnqb::files {

/// The file that a plan's path stands for: absolute, with every symbolic link followed, so that all paths of
/// one plan give the same one. Error when there is no such file or it cannot be reached.
std::filesystem::path FollowedPlanPath(const std::filesystem::path& plan);

}  // namespace krnqb::files
