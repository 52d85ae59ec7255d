#pragma once

#include <string_view>

namespace krnqb::company {

/// Whether a text is a day of the calendar, written year-month-day with four, two and two digits. Such texts
/// sort as the days do.
bool IsCalendarDate(std::string_view text) noexcept;

}  // namespace krnqb::company
