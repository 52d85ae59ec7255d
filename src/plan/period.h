#pragma once

#include <cstdint>

#include "krnqb/import_options.h"
#include "support/year_month.h"

namespace krnqb {

// The properties over the period's fields. One that reads 0 stores the default and returns it.

/// Returns the plan's first month; by default the import's.
std::int16_t SettleKRNStartingMonth(PeriodFields& period) noexcept;
/// Returns the plan's first year; by default the import's.
std::int16_t SettleKRNStartingYear(PeriodFields& period) noexcept;
/// Returns the import's first month; by default the plan's.
std::int16_t SettleStartingMonth(PeriodFields& period) noexcept;
/// Returns the import's first year; by default the one before the plan's. Throws Error 6 if that does not fit
/// 16 bits.
std::int16_t SettleStartingYear(PeriodFields& period);

/// Returns the twelve months that begin with `start`. A month or a year that is 0 becomes the plan's own,
/// which is settled; one that is given settles nothing.
TwelveMonths SettleTwelveMonths(const YearMonth& start, PeriodFields& period) noexcept;

}  // namespace krnqb
