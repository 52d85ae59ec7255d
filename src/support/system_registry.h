#pragma once

#include <memory>

#include "krnqb/outside_world.h"

namespace krnqb {

/// Returns read access to the system's registry, in the view of this program's architecture. Reads only texts
/// and 32-bit numbers. Returns null where the system has no registry.
std::shared_ptr<Registry> SystemRegistry();

}  // namespace krnqb
