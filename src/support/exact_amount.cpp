#include "support/exact_amount.h"

#include <fmt/format.h>

#include <cmath>
#include <cstddef>

#include "krnqb/error.h"

namespace krnqb {
namespace {

constexpr std::uint64_t millionthsPerUnit = 1'000'000;
constexpr std::int64_t millionthsPerHundredth = 10'000;
constexpr std::size_t mostDecimals = 6;
constexpr std::size_t leastDecimals = 2;
constexpr std::size_t digitsPerGroup = 3;

bool IsDigit(char character) noexcept {
  return character >= '0' && character <= '9';
}

// Returns false if the number is out of range.
bool AppendDigit(std::int64_t& number, char digit) noexcept {
  return !__builtin_mul_overflow(number, std::int64_t{10}, &number) &&
         !__builtin_add_overflow(number, std::int64_t{digit - '0'}, &number);
}

[[noreturn]] void ThrowOverflow() {
  throw Error(error_number::overflow, "an amount exceeds 9,223,372,036,854.78");
}

}  // namespace

ExactAmount ExactAmount::FromHundredths(std::int64_t hundredths) {
  std::int64_t millionths = 0;
  if (__builtin_mul_overflow(hundredths, millionthsPerHundredth, &millionths)) ThrowOverflow();
  return FromMillionths(millionths);
}

ExactAmount ExactAmount::From(double amount) {
  constexpr double limit = 9.2E+18;
  const double product = amount * static_cast<double>(millionthsPerUnit);
  if (!(std::abs(product) < limit)) ThrowOverflow();
  // The product is itself rounded; its exact error decides what looks like a half.
  const double error = std::fma(amount, static_cast<double>(millionthsPerUnit), -product);
  const double nearest = std::nearbyint(product);
  const double rest = product - nearest;
  auto millionths = static_cast<std::int64_t>(nearest);
  if (rest == 0) millionths += static_cast<std::int64_t>(std::nearbyint(error));
  if (rest == 0.5 && error > 0) ++millionths;
  if (rest == -0.5 && error < 0) --millionths;
  return FromMillionths(millionths);
}

std::optional<ExactAmount> ExactAmount::FromText(std::string_view text) noexcept {
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  std::int64_t number = 0;
  std::size_t decimals = 0;
  bool point = false;
  bool any = false;
  for (const char character : text) {
    if (character == '.' && !point) {
      point = true;
    } else if (!IsDigit(character)) {
      return std::nullopt;
    } else if (decimals == mostDecimals) {
      if (character != '0') return std::nullopt;
    } else {
      if (!AppendDigit(number, character)) return std::nullopt;
      any = true;
      if (point) ++decimals;
    }
  }
  if (!any) return std::nullopt;
  for (; decimals < mostDecimals; ++decimals) {
    if (!AppendDigit(number, '0')) return std::nullopt;
  }
  return FromMillionths(negative ? -number : number);
}

double ExactAmount::AsDouble() const noexcept {
  return static_cast<double>(millionths_) / static_cast<double>(millionthsPerUnit);
}

ExactAmount& ExactAmount::operator+=(const ExactAmount& other) {
  if (__builtin_add_overflow(millionths_, other.millionths_, &millionths_)) ThrowOverflow();
  return *this;
}

ExactAmount& ExactAmount::operator-=(const ExactAmount& other) {
  if (__builtin_sub_overflow(millionths_, other.millionths_, &millionths_)) ThrowOverflow();
  return *this;
}

ExactAmount ExactAmount::operator-() const {
  return ExactAmount() - *this;
}

std::string ExactAmount::PlainText() const {
  const auto bits = static_cast<std::uint64_t>(millionths_);
  const std::uint64_t magnitude = millionths_ < 0 ? 0 - bits : bits;
  std::string decimals = fmt::format("{:06}", magnitude % millionthsPerUnit);
  while (decimals.size() > leastDecimals && decimals.back() == '0') decimals.pop_back();
  return fmt::format("{}{}.{}", millionths_ < 0 ? "-" : "", magnitude / millionthsPerUnit, decimals);
}

std::string ExactAmount::Text() const {
  std::string text = PlainText();
  const std::size_t first = text.front() == '-' ? 1 : 0;
  for (std::size_t at = text.find('.'); at > first + digitsPerGroup;) {
    at -= digitsPerGroup;
    text.insert(at, ",");
  }
  return text;
}

}  // namespace krnqb
