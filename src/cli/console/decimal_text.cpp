#include "cli/console/decimal_text.h"

#include "support/number_text.h"

namespace krnqb::cli {
namespace {

constexpr std::string_view digits = "0123456789";

std::string WithTwoDecimals(std::string text) {
  const std::size_t point = text.find('.');
  const std::size_t decimals = point == std::string::npos ? 0 : text.size() - point - 1;
  if (point == std::string::npos) text += '.';
  if (decimals < 2) text.append(2 - decimals, '0');
  return text;
}

// "-0.00" is an amount of zero.
std::string WithoutSignOfZero(std::string text) {
  if (text.starts_with('-') && text.find_first_of("123456789") == std::string::npos) text.erase(0, 1);
  return text;
}

// Returns whether the text consists of an optional minus, digits, and optionally a point and digits, without
// leading zeros: the form that all readers of numbers agree on.
bool IsDecimalNumber(std::string_view text) {
  if (text.starts_with('-')) text.remove_prefix(1);
  const std::size_t point = text.find('.');
  const std::string_view whole = text.substr(0, point);
  if (whole.empty() || (whole.size() > 1 && whole.front() == '0')) return false;
  const auto onlyDigits = [](std::string_view part) {
    return part.find_first_not_of(digits) == std::string_view::npos;
  };
  if (point == std::string_view::npos) return onlyDigits(whole);
  const std::string_view decimals = text.substr(point + 1);
  return onlyDigits(whole) && !decimals.empty() && onlyDigits(decimals);
}

}  // namespace

std::string DecimalText(double amount) {
  return WithoutSignOfZero(WithTwoDecimals(PlainNumberText(amount)));
}

std::optional<std::string> DecimalText(std::string_view amount) {
  if (IsDecimalNumber(amount)) return WithoutSignOfZero(WithTwoDecimals(std::string(amount)));
  const std::optional<double> number = ConvertToDouble(amount);
  if (!number) return std::nullopt;
  return DecimalText(*number);
}

}  // namespace krnqb::cli
