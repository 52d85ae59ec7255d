#pragma once

#include <string_view>

namespace krnqb::company {

/// Returns whether a text is a calendar date written as YYYY-MM-DD. Such texts sort chronologically.
bool IsCalendarDate(std::string_view text) noexcept;

}  // namespace krnqb::company
