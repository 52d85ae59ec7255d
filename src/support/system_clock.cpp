#include "support/system_clock.h"

#include <ctime>

namespace krnqb {
namespace {

class MachineClock final : public Clock {
 public:
  LocalDateTime Now() override {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour, local.tm_min, local.tm_sec};
  }
};

}  // namespace

std::shared_ptr<Clock> SystemClock() {
  return std::make_shared<MachineClock>();
}

}  // namespace krnqb
