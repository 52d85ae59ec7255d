#pragma once

#include "krnqb/outside_world.h"

namespace krnqb::fakes {

/// A clock that stands still.
class FixedClock : public Clock {
 public:
  explicit FixedClock(const LocalDateTime& moment) : now(moment) {}
  LocalDateTime Now() override { return now; }

  LocalDateTime now;
};

}  // namespace krnqb::fakes
