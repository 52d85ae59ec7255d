#include "support/number_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <limits>

#include "krnqb/error.h"

namespace krnqb {
namespace {

bool IsBlank(char character) noexcept {
  return character == ' ' || (character >= '\t' && character <= '\r');
}
bool IsDigit(char character) noexcept {
  return character >= '0' && character <= '9';
}

// Reads a text from the front. `TakeIf` consumes nothing unless the character matches.
class Scanner {
 public:
  explicit Scanner(std::string_view text) noexcept : rest_(text) {}

  bool AtEnd() const noexcept { return rest_.empty(); }
  bool AtDigit(std::size_t offset = 0) const noexcept {
    return offset < rest_.size() && IsDigit(rest_[offset]);
  }
  bool At(char character) const noexcept { return !rest_.empty() && rest_.front() == character; }
  char Take() noexcept {
    const char character = rest_.front();
    rest_.remove_prefix(1);
    return character;
  }
  bool TakeIf(char character) noexcept {
    if (!At(character)) return false;
    rest_.remove_prefix(1);
    return true;
  }
  void SkipBlanks() noexcept {
    while (!rest_.empty() && IsBlank(rest_.front())) rest_.remove_prefix(1);
  }
  std::string_view Rest() const noexcept { return rest_; }

 private:
  std::string_view rest_;
};

// The marks allowed before and after the digits, each at most once.
struct Marks {
  bool sign = false;
  bool negative = false;
  bool parenthesis = false;
  bool currency = false;

  bool TakeLeading(Scanner& scanner) noexcept {
    if (!sign && !parenthesis && (scanner.At('+') || scanner.At('-'))) {
      sign = true;
      negative = scanner.Take() == '-';
      return true;
    }
    if (!sign && !parenthesis && scanner.TakeIf('(')) {
      parenthesis = true;
      negative = true;
      return true;
    }
    return !currency && scanner.TakeIf('$') && (currency = true);
  }

  bool TakeTrailing(Scanner& scanner, bool& closed) noexcept {
    if (!sign && !parenthesis && (scanner.At('+') || scanner.At('-'))) {
      sign = true;
      negative = scanner.Take() == '-';
      return true;
    }
    if (parenthesis && !closed && scanner.TakeIf(')')) {
      closed = true;
      return true;
    }
    return !currency && scanner.TakeIf('$') && (currency = true);
  }
};

// Appends the digits to `plain` without thousands separators. Returns false if there are no digits.
bool TakeDigits(Scanner& scanner, std::string& plain) {
  bool any = false;
  while (scanner.AtDigit() || (any && scanner.At(',') && scanner.AtDigit(1))) {
    if (scanner.TakeIf(',')) continue;
    plain += scanner.Take();
    any = true;
  }
  if (scanner.TakeIf('.')) {
    plain += '.';
    while (scanner.AtDigit()) {
      plain += scanner.Take();
      any = true;
    }
  }
  return any;
}

// Appends the exponent, if there is one. Returns false for an "E" without digits, which makes the whole text
// invalid.
bool TakeExponent(Scanner& scanner, std::string& plain) {
  if (!scanner.At('E') && !scanner.At('e')) return true;
  scanner.Take();
  plain += 'e';
  if (scanner.At('+') || scanner.At('-')) plain += scanner.Take();
  if (!scanner.AtDigit()) return false;
  while (scanner.AtDigit()) plain += scanner.Take();
  return true;
}

// Returns 0 for a number too small for a double, and nothing for one too large.
std::optional<double> FromPlainText(std::string_view plain) noexcept {
  double number = 0;
  const auto result = std::from_chars(plain.data(), plain.data() + plain.size(), number);
  if (result.ec == std::errc()) return number;
  if (result.ec != std::errc::result_out_of_range) return std::nullopt;
  const std::size_t exponent = plain.find_first_of("eE");
  const bool tiny = exponent == std::string_view::npos ? plain.find_first_of("123456789") > plain.find('.')
                                                       : plain.substr(exponent + 1).starts_with('-');
  return tiny ? std::optional<double>(0) : std::nullopt;
}

// Up to 15 significant digits of a number, and the power of ten of the first one.
struct DecimalDigits {
  std::string digits;
  int power = 0;
};

DecimalDigits SignificantDigits(double magnitude) {
  const std::string text = fmt::format("{:.14e}", magnitude);
  const std::size_t exponent = text.find('e');
  DecimalDigits result;
  result.digits = text.substr(0, 1) + text.substr(2, exponent - 2);
  const std::size_t last = result.digits.find_last_not_of('0');
  result.digits.resize(last == std::string::npos ? 1 : last + 1);
  const char* const first = text.data() + exponent + (text[exponent + 1] == '+' ? 2 : 1);
  std::from_chars(first, text.data() + text.size(), result.power);
  return result;
}

// Returns the number that a text is, if it begins with a digit, or a minus and a digit, and has nothing but
// digits and a point after it. Nearly every amount is such a text.
std::optional<double> PlainDecimal(std::string_view text) noexcept {
  const std::size_t first = text.starts_with('-') ? 1 : 0;
  if (text.size() == first || !IsDigit(text[first])) return std::nullopt;
  double number = 0;
  const char* const end = text.data() + text.size();
  const auto result = std::from_chars(text.data(), end, number, std::chars_format::fixed);
  return result.ec == std::errc() && result.ptr == end ? std::optional(number) : std::nullopt;
}

}  // namespace

std::optional<double> ConvertToDouble(std::string_view text) noexcept {
  if (const std::optional<double> number = PlainDecimal(text)) return number;
  Scanner scanner(text);
  Marks marks;
  do scanner.SkipBlanks();
  while (marks.TakeLeading(scanner));
  std::string plain;
  if (!TakeDigits(scanner, plain) || !TakeExponent(scanner, plain)) return std::nullopt;
  bool closed = false;
  do scanner.SkipBlanks();
  while (marks.TakeTrailing(scanner, closed));
  if (!scanner.AtEnd() || marks.parenthesis != closed) return std::nullopt;
  const std::optional<double> magnitude = FromPlainText(plain);
  return magnitude && marks.negative ? -*magnitude : magnitude;
}

double RequireDouble(std::string_view text) {
  const std::optional<double> number = ConvertToDouble(text);
  if (!number) throw Error(error_number::typeMismatch);
  return *number;
}

double LeadingNumber(std::string_view text) {
  Scanner scanner(text);
  scanner.SkipBlanks();
  const bool negative = scanner.At('-');
  if (scanner.At('+') || scanner.At('-')) scanner.Take();
  const std::string_view rest = scanner.Rest();
  const bool number = scanner.AtDigit() || (scanner.At('.') && scanner.AtDigit(1));
  if (!number) return 0;
  double magnitude = 0;
  const auto result = std::from_chars(rest.data(), rest.data() + rest.size(), magnitude);
  if (result.ec == std::errc::result_out_of_range) {
    const auto length = static_cast<std::size_t>(result.ptr - rest.data());
    const std::optional<double> tiny = FromPlainText(rest.substr(0, length));
    if (!tiny) throw Error(error_number::overflow);
    magnitude = *tiny;
  }
  return negative ? -magnitude : magnitude;
}

bool ReadsWhole(std::string_view text) noexcept {
  // Nearly every text is a plain decimal number.
  constexpr std::string_view plainCharacters = "0123456789.";
  const std::string_view magnitude = text.substr(text.starts_with('-') ? 1 : 0);
  const bool plain = !magnitude.empty() && IsDigit(magnitude.front()) &&
                     magnitude.find_first_not_of(plainCharacters) == std::string_view::npos &&
                     magnitude.find('.') == magnitude.rfind('.');
  if (plain) return true;
  const std::optional<double> number = ConvertToDouble(text);
  if (!number) return std::all_of(text.begin(), text.end(), IsBlank);
  return LeadingNumber(text) == *number;
}

std::string GeneralNumberText(double number) {
  if (number == 0) return "0";
  return fmt::format("{:.15G}", number);
}

std::string PlainNumberText(double number) {
  if (number == 0) return "0";
  const auto [digits, power] = SignificantDigits(std::abs(number));
  const auto count = static_cast<int>(digits.size());
  const std::string sign = number < 0 ? "-" : "";
  if (power < 0) return sign + "0." + std::string(static_cast<std::size_t>(-power - 1), '0') + digits;
  if (power >= count - 1)
    return sign + digits + std::string(static_cast<std::size_t>(power - count + 1), '0');
  const auto whole = static_cast<std::size_t>(power) + 1;
  return sign + digits.substr(0, whole) + "." + digits.substr(whole);
}

std::int16_t RequireInteger(double number) {
  const double floor = std::floor(number);
  const double fraction = number - floor;
  const bool up = fraction > 0.5 || (fraction == 0.5 && std::fmod(floor, 2) != 0);
  const double rounded = up ? floor + 1 : floor;
  const bool fits = rounded >= std::numeric_limits<std::int16_t>::min() &&
                    rounded <= std::numeric_limits<std::int16_t>::max();
  if (!fits) throw Error(error_number::overflow);
  return static_cast<std::int16_t>(rounded);
}

}  // namespace krnqb
