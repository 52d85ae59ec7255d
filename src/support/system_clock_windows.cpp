#include "support/system_clock.h"

#include <windows.h>

namespace krnqb {
namespace {

class MachineClock final : public Clock {
 public:
  LocalDateTime Now() override {
    SYSTEMTIME local{};
    GetLocalTime(&local);
    return {local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond};
  }
};

}  // namespace

std::shared_ptr<Clock> SystemClock() {
  return std::make_shared<MachineClock>();
}

}  // namespace krnqb
