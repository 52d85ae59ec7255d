#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "krnqb/enumerations.h"
#include "support/year_month.h"

namespace krnqb::plan_file {

/// Returns "ald", "bri" or "cor"; empty for any other value.
std::string_view ProductText(QBKRNproduct product) noexcept;
/// Returns the product of such a text, in lower case; nullopt for any other text.
std::optional<QBKRNproduct> ProductFromText(std::string_view text) noexcept;

/// Returns the month in which a plan begins, of a year 1000 to 9999, as YYYY-MM.
std::string PlanStartText(YearMonth start);
/// Parses a start written as YYYY-MM; returns nullopt for any other text.
std::optional<YearMonth> PlanStartFromText(std::string_view text) noexcept;

}  // namespace krnqb::plan_file
