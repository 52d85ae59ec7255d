#pragma once

#include <memory>

#include "krnqb/outside_world.h"

namespace krnqb {

/// Returns a clock that reads the system time in the local time zone.
std::shared_ptr<Clock> SystemClock();

}  // namespace krnqb
