#include "company/records/amount.h"

#include <fmt/format.h>

#include <cmath>

#include "support/number_text.h"

namespace krnqb::company {
namespace {

// Far above any real amount, yet small enough for sums to stay within 64 bits.
constexpr double greatestAmount = 1e12;

}  // namespace

std::optional<std::int64_t> Hundredths(std::string_view amount) noexcept {
  const std::optional<double> number = ConvertToDouble(amount);
  if (!number || std::abs(*number) > greatestAmount) return std::nullopt;
  return std::llround(*number * 100);
}

std::string AmountText(std::int64_t hundredths) {
  const std::int64_t amount = std::abs(hundredths);
  return fmt::format("{}{}.{:02}", hundredths < 0 ? "-" : "", amount / 100, amount % 100);
}

}  // namespace krnqb::company
