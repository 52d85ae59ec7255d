#pragma once

#include <cstdint>

#include "support/number_text.h"

namespace krnqb {

/// What a progress bar shows while a run's operations work through their steps.
inline constexpr auto processingText = "Processing...";

/// A step of several as whole percent, halves to even: the first of 12 is 8, the third 25.
inline std::int16_t RoundedPercent(int step, int stepCount) {
  return RequireInteger(static_cast<double>(step) / stepCount * 100);
}

}  // namespace krnqb
