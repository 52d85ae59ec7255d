#pragma once

#include <cstdint>

#include "support/number_text.h"

namespace krnqb {

/// The description in every progress event of an import.
inline constexpr auto processingText = "Processing...";

/// Returns `step` of `stepCount` in whole percent, with halves rounded to even: 1 of 12 is 8, 3 of 12 is 25.
inline std::int16_t RoundedPercent(int step, int stepCount) {
  return RequireInteger(static_cast<double>(step) / stepCount * 100);
}

}  // namespace krnqb
