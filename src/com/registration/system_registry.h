#pragma once

#include <memory>

#include "krnqb/outside_world.h"

namespace krnqb::com {

/// Read access to the system's registry, as programs of this library's architecture see it. Values of other
/// types than texts and 32-bit numbers are not read.
std::shared_ptr<Registry> SystemRegistry();

}  // namespace krnqb::com
