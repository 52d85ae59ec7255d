#include "cli/console/surroundings.h"

#include "support/system_clock.h"

namespace krnqb::cli {

std::shared_ptr<Clock> ClockOf(const Surroundings& surroundings) {
  return surroundings.clock != nullptr ? surroundings.clock : SystemClock();
}

std::chrono::milliseconds StopwatchTime(const Surroundings& surroundings) {
  if (surroundings.stopwatch) return surroundings.stopwatch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(
      std::chrono::steady_clock::now().time_since_epoch());
}

}  // namespace krnqb::cli
