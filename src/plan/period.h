#pragma once

#include <cstdint>

#include "krnqb/import_options.h"
#include "support/year_month.h"

namespace krnqb {

// Each function returns a field of the period. If the field is 0, it first stores the default.

/// Returns the plan's first month; by default the import's.
std::int16_t SettleKRNStartingMonth(PeriodFields& period) noexcept;
/// Returns the plan's first year; by default the import's.
std::int16_t SettleKRNStartingYear(PeriodFields& period) noexcept;
/// Returns the import's first month; by default the plan's.
std::int16_t SettleStartingMonth(PeriodFields& period) noexcept;
/// Returns the import's first year; by default the year before the plan's. Throws Error 6 if that does not
/// fit in 16 bits.
std::int16_t SettleStartingYear(PeriodFields& period);

/// Returns the twelve months that begin with `start`. A month or year of 0 is replaced by the plan's first
/// month or year, whose default is stored if it is 0 as well.
TwelveMonths SettleTwelveMonths(const YearMonth& start, PeriodFields& period) noexcept;

}  // namespace krnqb
