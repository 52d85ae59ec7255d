#pragma once

#include <memory>

#include "krnqb/outside_world.h"

namespace krnqb::com {

/// Returns read access to the system's registry, in the view of this DLL's architecture. Reads only texts and
/// 32-bit numbers.
std::shared_ptr<Registry> SystemRegistry();

}  // namespace krnqb::com
