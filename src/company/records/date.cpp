#include "company/records/date.h"

#include <charconv>
#include <cstdint>
#include <optional>

#include "support/date.h"

namespace krnqb::company {
namespace {

std::optional<std::int16_t> Digits(std::string_view text) {
  std::int16_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, fault] = std::from_chars(text.data(), end, number);
  if (fault != std::errc() || stop != end || number < 0) return std::nullopt;
  return number;
}

}  // namespace

bool IsCalendarDate(std::string_view text) noexcept {
  if (text.size() != 10 || text[4] != '-' || text[7] != '-') return false;
  const auto year = Digits(text.substr(0, 4));
  const auto month = Digits(text.substr(5, 2));
  const auto day = Digits(text.substr(8, 2));
  if (!year || !month || !day || *year < 100 || *month < 1 || *month > 12) return false;
  return *day >= 1 && *day <= DaysInCalendarMonth(*month, *year);
}

}  // namespace krnqb::company
