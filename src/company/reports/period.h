#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace krnqb::company {

/// A column of amounts; days are YYYY-MM-DD and inclusive.
struct ReportColumn {
  std::string title;  ///< such as "Jan 02"
  std::string firstDay;
  std::string lastDay;
};

/// A report's columns of amounts and its subtitle.
struct ReportPeriod {
  std::string subtitle;  ///< "January through December 2002"
  std::vector<ReportColumn> columns;
};

/// Returns a column for each month between two calendar dates. The first and last columns cover only days in
/// the range ("Jan 15 - 31, 02"). No columns if the first day is after the last.
ReportPeriod MonthsBetween(std::string_view firstDay, std::string_view lastDay);

/// Returns the number of months that a range of calendar dates touches; 0 or less if the first day is after
/// the last.
int CountMonths(std::string_view firstDay, std::string_view lastDay);

/// Returns one column as of a calendar date: "Dec 31, 02".
ReportPeriod AsOf(std::string_view day);

/// Return the first and the last day of a day's month.
std::string FirstDayOfMonth(std::string_view day);
std::string LastDayOfMonth(std::string_view day);

}  // namespace krnqb::company
