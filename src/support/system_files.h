#pragma once

#include <memory>

#include "krnqb/outside_world.h"

namespace krnqb {

/// Returns access to the system's files.
std::shared_ptr<FileSystem> SystemFiles();

}  // namespace krnqb
