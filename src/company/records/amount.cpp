#include "company/records/amount.h"

#include <fmt/format.h>

#include <cmath>

#include "krnqb/error.h"
#include "support/number_text.h"

namespace krnqb::company {
namespace {

// Far above any real amount, yet small enough for the sum of 90,000 amounts to stay within 64 bits.
constexpr double greatestAmount = 1e12;

[[noreturn]] void ThrowOverflow() {
  throw Error(error_number::overflow,
              "The amounts of the company add up to more than 92,233,720,368,547,758.07; a record of its "
              "transactions, items or accounts must be wrong");
}

}  // namespace

std::optional<std::int64_t> Hundredths(std::string_view amount) noexcept {
  const std::optional<double> number = ConvertToDouble(amount);
  if (!number || std::abs(*number) > greatestAmount) return std::nullopt;
  return std::llround(*number * 100);
}

std::int64_t Sum(std::int64_t amount, std::int64_t more) {
  std::int64_t sum = 0;
  if (__builtin_add_overflow(amount, more, &sum)) ThrowOverflow();
  return sum;
}

std::int64_t Difference(std::int64_t amount, std::int64_t less) {
  std::int64_t difference = 0;
  if (__builtin_sub_overflow(amount, less, &difference)) ThrowOverflow();
  return difference;
}

std::string AmountText(std::int64_t hundredths) {
  const auto bits = static_cast<std::uint64_t>(hundredths);
  const std::uint64_t amount = hundredths < 0 ? 0 - bits : bits;
  return fmt::format("{}{}.{:02}", hundredths < 0 ? "-" : "", amount / 100, amount % 100);
}

}  // namespace krnqb::company
