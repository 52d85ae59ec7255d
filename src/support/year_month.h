#pragma once

#include <cstdint>

namespace krnqb {

/// A month of a year, from options or plans. Neither number is checked until `DaysInMonth`.
struct YearMonth {
  std::int16_t year = 0;
  std::int16_t month = 0;  ///< 1 to 12 in the calendar

  bool operator==(const YearMonth&) const = default;
};

/// Returns the next month: after month 12 January of the next year, otherwise the month's number plus 1.
/// Throws Error 6 if a number does not fit in 16 bits.
YearMonth NextMonth(const YearMonth& month);

/// Returns the number of days up to the first day of the next month. Throws Error 13 if one of the two days
/// is not a date: for a month outside 1 to 12, a year outside 100 to 9999, and December 9999.
std::int16_t DaysInMonth(const YearMonth& month);

/// The twelve months that begin with a month.
class TwelveMonths {
 public:
  explicit TwelveMonths(const YearMonth& first) noexcept : first_(first) {}

  const YearMonth& First() const noexcept { return first_; }

  /// Returns month `number`, 1 to 12, counted from the first. Throws Error 6 if it does not fit in 16 bits.
  YearMonth Month(std::int16_t number) const;

  /// Returns the month that ends the year: `Month(12)` if the first month is 1 to 12. A first month of 13
  /// ends in December of the next year. Throws Error 6 if the result does not fit in 16 bits.
  YearMonth Last() const;

 private:
  YearMonth first_;
};

}  // namespace krnqb
