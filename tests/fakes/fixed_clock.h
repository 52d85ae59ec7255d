#pragma once

#include "krnqb/outside_world.h"

namespace krnqb::fakes {

/// A clock that shows a fixed time until a test changes it.
class FixedClock : public Clock {
 public:
  explicit FixedClock(const LocalDateTime& moment) : now(moment) {}
  LocalDateTime Now() override { return now; }

  LocalDateTime now;
};

}  // namespace krnqb::fakes
