#include "company/reports/period.h"

#include <fmt/format.h>

#include <charconv>
#include <cstdint>

#include "support/date.h"

namespace krnqb::company {
namespace {

struct Day {
  std::int16_t year = 0;
  std::int16_t month = 0;
  std::int16_t day = 0;

  bool operator==(const Day&) const = default;
};

std::int16_t Digits(std::string_view digits) {
  std::int16_t number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

Day ReadDay(std::string_view text) {
  return {Digits(text.substr(0, 4)), Digits(text.substr(5, 2)), Digits(text.substr(8, 2))};
}

// With four-digit years, so that such texts sort chronologically.
std::string WriteDay(const Day& day) {
  return fmt::format("{:04}-{:02}-{:02}", day.year, day.month, day.day);
}

Day First(Day day) {
  day.day = 1;
  return day;
}

Day Last(Day day) {
  day.day = DaysInCalendarMonth(day.month, day.year);
  return day;
}

bool IsSameMonth(const Day& day, const Day& otherDay) {
  return day.year == otherDay.year && day.month == otherDay.month;
}

Day NextMonth(const Day& day) {
  if (day.month == 12) return {static_cast<std::int16_t>(day.year + 1), 1, 1};
  return {day.year, static_cast<std::int16_t>(day.month + 1), 1};
}

bool IsWholeMonths(const Day& first, const Day& last) {
  return first == First(first) && last == Last(last);
}

// Both days must be in the same month.
std::string ColumnTitle(const Day& first, const Day& last) {
  const std::string_view month = EnglishMonthName(first.month).substr(0, 3);
  const int year = first.year % 100;
  if (IsWholeMonths(first, last)) return fmt::format("{} {:02}", month, year);
  if (first == last) return fmt::format("{} {}, {:02}", month, first.day, year);
  return fmt::format("{} {} - {}, {:02}", month, first.day, last.day, year);
}

std::string MonthsSubtitle(const Day& first, const Day& last) {
  const std::string_view firstMonth = EnglishMonthName(first.month);
  const std::string_view lastMonth = EnglishMonthName(last.month);
  if (IsSameMonth(first, last)) return fmt::format("{} {}", firstMonth, first.year);
  if (first.year == last.year) return fmt::format("{} through {} {}", firstMonth, lastMonth, first.year);
  return fmt::format("{} {} through {} {}", firstMonth, first.year, lastMonth, last.year);
}

std::string LongDay(const Day& day) {
  return fmt::format("{} {}, {}", EnglishMonthName(day.month), day.day, day.year);
}

std::string DaysSubtitle(const Day& first, const Day& last) {
  if (first == last) return LongDay(first);
  const std::string_view firstMonth = EnglishMonthName(first.month);
  if (IsSameMonth(first, last)) {
    return fmt::format("{} {} - {}, {}", firstMonth, first.day, last.day, first.year);
  }
  if (first.year == last.year) return fmt::format("{} {} through {}", firstMonth, first.day, LongDay(last));
  return fmt::format("{} through {}", LongDay(first), LongDay(last));
}

}  // namespace

ReportPeriod MonthsBetween(std::string_view firstDay, std::string_view lastDay) {
  if (firstDay > lastDay) return {};
  const Day last = ReadDay(lastDay);
  Day first = ReadDay(firstDay);
  ReportPeriod period;
  period.subtitle = IsWholeMonths(first, last) ? MonthsSubtitle(first, last) : DaysSubtitle(first, last);
  for (bool isLast = false; !isLast; first = NextMonth(first)) {
    isLast = IsSameMonth(first, last);
    const Day columnLast = isLast ? last : Last(first);
    period.columns.push_back({ColumnTitle(first, columnLast), WriteDay(first), WriteDay(columnLast)});
  }
  return period;
}

int CountMonths(std::string_view firstDay, std::string_view lastDay) {
  const Day first = ReadDay(firstDay);
  const Day last = ReadDay(lastDay);
  return (last.year - first.year) * 12 + last.month - first.month + 1;
}

ReportPeriod AsOf(std::string_view day) {
  const Day date = ReadDay(day);
  const std::string title =
      fmt::format("{} {}, {:02}", EnglishMonthName(date.month).substr(0, 3), date.day, date.year % 100);
  return {"As of " + LongDay(date), {{title, std::string(day), std::string(day)}}};
}

std::string FirstDayOfMonth(std::string_view day) {
  return WriteDay(First(ReadDay(day)));
}

std::string LastDayOfMonth(std::string_view day) {
  return WriteDay(Last(ReadDay(day)));
}

}  // namespace krnqb::company
