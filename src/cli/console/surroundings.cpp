#include "cli/console/surroundings.h"

#include "support/system_clock.h"

namespace krnqb::cli {

std::shared_ptr<Clock> ClockOf(const Surroundings& surroundings) {
  return surroundings.clock != nullptr ? surroundings.clock : SystemClock();
}

}  // namespace krnqb::cli
