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

/// Returns "ald", "bri" or "cor"; empty for any other value.
std::string_view ProductText(QBKRNproduct product) noexcept;
/// Returns the product of such a text, in lower case; nullopt for any other text.
std::optional<QBKRNproduct> ProductFromText(std::string_view text) noexcept;

/// Returns the start as YYYY-MM.
std::string PlanStartText(PlanStart start);
/// Parses a start written as YYYY-MM; returns nullopt for any other text.
std::optional<PlanStart> PlanStartFromText(std::string_view text) noexcept;

}  // namespace krnqb::plan_file
