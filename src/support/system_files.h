#pragma once

#include <memory>

#include "krnqb/outside_world.h"

namespace krnqb {

/// The machine's files.
std::shared_ptr<FileSystem> SystemFiles();

}  // namespace krnqb
