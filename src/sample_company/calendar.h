#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

namespace krnqb::sample_company {

using Day = std::chrono::sys_days;

/// Formats a day as YYYY-MM-DD.
std::string DayText(Day day);
/// Returns the seconds since 1970 of a day and a time of day in seconds.
std::int64_t UnixTime(Day day, std::int64_t secondOfDay);

/// The plan of one month's transactions.
struct MonthPlan {
  Day firstDay;
  std::int64_t days = 0;
  std::int64_t transactions = 0;
  std::int64_t pricePermille = 1000;  ///< of the first year's price level
  bool beginsYear = false;

  /// Returns the day of one of the month's transactions, counted from 0. They are spread evenly over the
  /// month, except Sundays.
  Day DayOf(std::int64_t transaction) const;
};

/// Distributes `transactions` over the months of the years: more in spring and before Christmas, growing each
/// year, at rising prices.
std::vector<MonthPlan> PlanMonths(std::int16_t firstYear, std::int16_t lastYear, std::int64_t transactions);

/// Returns the number of transactions of the quietest year.
std::int64_t FewestInAYear(const std::vector<MonthPlan>& months);

}  // namespace krnqb::sample_company
