#include "support/date.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <limits>

#include "krnqb/error.h"

namespace krnqb {
namespace {

constexpr std::array<std::string_view, 12> monthNames = {"January",   "February", "March",    "April",
                                                         "May",       "June",     "July",     "August",
                                                         "September", "October",  "November", "December"};

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(" \t\r\n") - first + 1);
}

char AsciiLower(char character) {
  return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

std::chrono::year_month Month(std::int16_t month, std::int16_t year) {
  return std::chrono::year(year) / std::chrono::month(static_cast<unsigned>(month));
}

}  // namespace

std::int16_t DaysInCalendarMonth(std::int16_t month, std::int16_t year) {
  if (month < 1 || month > 12 || year < 100 || year > 9999) throw Error(error_number::typeMismatch);
  const std::chrono::year_month_day_last lastDay = Month(month, year) / std::chrono::last;
  return static_cast<std::int16_t>(static_cast<unsigned>(lastDay.day()));
}

std::optional<std::int16_t> MonthNumber(std::string_view name) {
  const std::string_view trimmed = Trimmed(name);
  const auto* const found = std::ranges::find_if(monthNames, [&](std::string_view monthName) {
    return std::ranges::equal(monthName, trimmed, {}, AsciiLower, AsciiLower);
  });
  if (found == monthNames.end()) return std::nullopt;
  return static_cast<std::int16_t>(found - monthNames.begin() + 1);
}

std::string_view EnglishMonthName(std::int16_t month) {
  if (month < 1 || month > 12) throw Error(error_number::subscriptOutOfRange);
  return monthNames[static_cast<std::size_t>(month - 1)];
}

std::string DateText(std::int16_t year, std::int16_t month, std::int16_t day) {
  return fmt::format("{}-{:02}-{:02}", year, month, day);
}

std::int32_t RoundedDateSerial(const LocalDateTime& moment) {
  using std::chrono::sys_days;
  const sys_days dayZero = std::chrono::year(1899) / 12 / 30;
  const sys_days today = std::chrono::year(moment.year) /
                         std::chrono::month(static_cast<unsigned>(moment.month)) /
                         std::chrono::day(static_cast<unsigned>(moment.day));
  const auto wholeDays = static_cast<std::int32_t>((today - dayZero).count());
  constexpr std::int32_t noon = 12 * 60 * 60;
  const std::int32_t seconds = (moment.hour * 60 + moment.minute) * 60 + moment.second;
  const bool up = seconds > noon || (seconds == noon && wholeDays % 2 != 0);
  return up ? wholeDays + 1 : wholeDays;
}

std::int16_t CheckedInteger(std::int32_t value) {
  if (value < std::numeric_limits<std::int16_t>::min() || value > std::numeric_limits<std::int16_t>::max()) {
    throw Error(error_number::overflow);
  }
  return static_cast<std::int16_t>(value);
}

}  // namespace krnqb
