#pragma once

#include <chrono>
#include <optional>
#include <string_view>

#include "profit_and_loss/statement.h"

namespace krnqb::profit_and_loss {

/// Reads the time that a column title or a subtitle names: "Jan 02", "January 2002", "2002-01",
/// "Jan - Dec 02", "Oct '01 - Sep 02", "January 1 through 15, 2002". Returns nothing for any other text.
/// Years of two digits are 1970 to 2069.
std::optional<DayRange> ReadPeriod(std::string_view text);

/// Returns the days of a month.
DayRange DaysOf(const YearMonth& month);

/// Returns a column with these days, and with the month if they are those of one.
StatementColumn ColumnOf(std::string_view title, const DayRange& days);

/// Reads a date: "2002-01-31", "01/31/2002", "1/31/02" or "31.01.2002". Returns nothing for any other text.
std::optional<std::chrono::year_month_day> ReadDate(std::string_view text);

}  // namespace krnqb::profit_and_loss
