#pragma once

#include <cstdint>

namespace krnqb {

/// The plan's first month and the import's first month as they are stored; 0 means not set.
struct PeriodFields {
  std::int16_t krnStartingMonth = 0;  ///< 1 to 12
  std::int16_t krnStartingYear = 0;
  std::int16_t startingMonth = 0;  ///< 1 to 12
  std::int16_t startingYear = 0;
};

// The properties over these fields. One that finds its field 0 stores the default that it gives.

/// The plan's first month; by default the import's.
std::int16_t KRNStartingMonth(PeriodFields& period) noexcept;
/// The plan's first year; by default the import's.
std::int16_t KRNStartingYear(PeriodFields& period) noexcept;
/// The import's first month; by default the plan's.
std::int16_t StartingMonth(PeriodFields& period) noexcept;
/// The import's first year; by default the one before the plan's. Error 6 when that does not fit 16 bits.
std::int16_t StartingYear(PeriodFields& period);

}  // namespace krnqb
