#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace krnqb::sample_company {

using Day = std::chrono::sys_days;

/// Year-month-day.
std::string DayText(Day day);
/// Seconds since 1970, of a time of day given in seconds.
std::int64_t UnixTime(Day day, std::int64_t secondOfDay);

/// What a company does in a month.
struct MonthPlan {
  Day firstDay;
  std::int64_t days = 0;
  std::int64_t transactions = 0;
  std::int64_t pricePermille = 1000;  ///< of the first year's prices
  bool beginsYear = false;

  /// The day of one of the month's transactions, counted from 0: they are spread evenly over the month, none
  /// of them on a Sunday.
  Day DayOf(std::int64_t transaction) const;
};

/// Spreads `transactions` over the months of the years: more in spring and before Christmas, and more each
/// year, at rising prices.
std::vector<MonthPlan> PlanMonths(std::int16_t firstYear, std::int16_t lastYear, std::int64_t transactions);

/// The number of transactions of the year that has the fewest.
std::int64_t FewestInAYear(const std::vector<MonthPlan>& months);

}  // namespace krnqb::sample_company
