#pragma once

#include <memory>

#include "krnqb/outside_world.h"

namespace krnqb {

/// The machine's clock in the machine's time zone.
std::shared_ptr<Clock> SystemClock();

}  // namespace krnqb
