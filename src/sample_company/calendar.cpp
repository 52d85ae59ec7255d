#include "sample_company/calendar.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <limits>

namespace krnqb::sample_company {
namespace {

constexpr std::array<std::int64_t, 12> monthWeights = {58, 64, 96, 138, 152, 128, 94, 82, 98, 104, 112, 74};
constexpr std::int64_t yearlyGrowthPercent = 7;
constexpr std::int64_t yearlyInflationPercent = 3;

std::int64_t Grown(std::int64_t value, std::int64_t percent) {
  return value * (100 + percent) / 100;
}

}  // namespace

std::string DayText(Day day) {
  const std::chrono::year_month_day date(day);
  return fmt::format("{:04}-{:02}-{:02}", static_cast<int>(date.year()), static_cast<unsigned>(date.month()),
                     static_cast<unsigned>(date.day()));
}

std::int64_t UnixTime(Day day, std::int64_t secondOfDay) {
  return std::chrono::seconds(day.time_since_epoch()).count() + secondOfDay;
}

Day MonthPlan::DayOf(std::int64_t transaction) const {
  const Day day = firstDay + std::chrono::days(transaction * days / transactions);
  if (std::chrono::weekday(day) != std::chrono::Sunday) return day;
  const bool isLastOfMonth = day == firstDay + std::chrono::days(days - 1);
  return isLastOfMonth ? day - std::chrono::days(1) : day + std::chrono::days(1);
}

std::vector<MonthPlan> PlanMonths(std::int16_t firstYear, std::int16_t lastYear, std::int64_t transactions) {
  std::vector<MonthPlan> months;
  std::vector<std::int64_t> weightsSoFar;
  std::int64_t yearWeight = 1000;
  std::int64_t price = 1000;
  std::int64_t allWeights = 0;
  for (int year = firstYear; year <= lastYear; ++year) {
    for (unsigned month = 1; month <= 12; ++month) {
      const std::chrono::year_month first{std::chrono::year(year), std::chrono::month(month)};
      MonthPlan plan;
      plan.firstDay = Day(first / 1);
      plan.days = (Day((first + std::chrono::months(1)) / 1) - plan.firstDay).count();
      plan.pricePermille = price;
      plan.beginsYear = month == 1;
      months.push_back(plan);
      weightsSoFar.push_back(allWeights += yearWeight * monthWeights[month - 1]);
    }
    yearWeight = Grown(yearWeight, yearlyGrowthPercent);
    price = Grown(price, yearlyInflationPercent);
  }

  // Rounds the cumulative number up to each month, so that the total is exact.
  std::int64_t done = 0;
  for (std::size_t month = 0; month < months.size(); ++month) {
    const std::int64_t upToHere = transactions * weightsSoFar[month] / allWeights;
    months[month].transactions = upToHere - done;
    done = upToHere;
  }
  return months;
}

std::int64_t FewestInAYear(const std::vector<MonthPlan>& months) {
  std::int64_t fewest = std::numeric_limits<std::int64_t>::max();
  for (std::size_t first = 0; first < months.size(); first += 12) {
    std::int64_t inYear = 0;
    for (std::size_t month = first; month < first + 12; ++month) inYear += months[month].transactions;
    fewest = std::min(fewest, inYear);
  }
  return fewest;
}

}  // namespace krnqb::sample_company
