#include "support/money_text.h"

#include <fmt/format.h>

#include <cmath>
#include <cstddef>

#include "support/number_text.h"

namespace krnqb {
namespace {

constexpr double leastWithExponent = 1E+15;
constexpr std::size_t digitsPerGroup = 3;

}  // namespace

std::string MoneyText(double amount, MoneyForm form) {
  if (!std::isfinite(amount)) return "out of range";
  if (std::abs(amount) >= leastWithExponent) return GeneralNumberText(amount);
  std::string text = fmt::format("{:.{}f}", std::abs(amount), form == MoneyForm::Cents ? 2 : 0);
  const std::size_t point = text.find('.');
  std::size_t digits = point == std::string::npos ? text.size() : point;
  const bool zero = text.find_first_not_of("0.") == std::string::npos;
  while (digits > digitsPerGroup) {
    digits -= digitsPerGroup;
    text.insert(digits, ",");
  }
  return amount < 0 && !zero ? '-' + text : text;
}

}  // namespace krnqb
