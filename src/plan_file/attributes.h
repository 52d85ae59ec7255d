#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "krnqb/enumerations.h"

namespace krnqb::plan_file {

/// The month in which a plan begins.
struct PlanStart {
  std::int16_t year = 0;   ///< 1000 to 9999
  std::int16_t month = 0;  ///< 1 to 12

  bool operator==(const PlanStart&) const = default;
};

/// "ald", "bri" or "cor"; empty for another value.
std::string_view ProductText(QBKRNproduct product) noexcept;
/// The product of such a text, in lower case; none for any other text.
std::optional<QBKRNproduct> ProductFromText(std::string_view text) noexcept;

/// The start as YYYY-MM.
std::string PlanStartText(PlanStart start);
/// The start of a text YYYY-MM; none for any other text.
std::optional<PlanStart> PlanStartFromText(std::string_view text) noexcept;

}  // namespace krnqb::plan_file
