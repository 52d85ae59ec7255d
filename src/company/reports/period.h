#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace krnqb::company {

/// Days written year-month-day, both included.
struct ReportColumn {
  std::string title;  ///< as it is shown: "Jan 02"
  std::string firstDay;
  std::string lastDay;
};

/// The columns of amounts of a report and the line under its title.
struct ReportPeriod {
  std::string subtitle;  ///< "January through December 2002"
  std::vector<ReportColumn> columns;
};

/// A column for each month from the first to the last of these days, which are calendar dates; the first and
/// the last one only as far as the days go ("Jan 15 - 31, 02"). None when the first comes after the last.
ReportPeriod MonthsBetween(std::string_view firstDay, std::string_view lastDay);

/// One column, as of a day, which is a calendar date: "Dec 31, 02".
ReportPeriod AsOf(std::string_view day);

/// The first and the last day of a day's month.
std::string FirstDayOfMonth(std::string_view day);
std::string LastDayOfMonth(std::string_view day);

}  // namespace krnqb::company
