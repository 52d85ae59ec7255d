#pragma once

#include <cstdint>

#include "support/number_text.h"

namespace krnqb {

/// The progress description of steps that have no description of their own.
inline constexpr auto processingText = "Processing...";

/// Returns a step's share of all steps in percent, rounded half to even: step 1 of 12 is 8, step 3 is 25.
inline std::int16_t RoundedPercent(int step, int stepCount) {
  return RequireInteger(static_cast<double>(step) / stepCount * 100);
}

}  // namespace krnqb
