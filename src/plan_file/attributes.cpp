#include "plan_file/attributes.h"

#include <fmt/format.h>

#include <array>
#include <charconv>
#include <utility>

namespace krnqb::plan_file {
namespace {

constexpr std::array<std::pair<QBKRNproduct, std::string_view>, 3> productTexts{
    {{QBKRN_ALD, "ald"}, {QBKRN_BRI, "bri"}, {QBKRN_COR, "cor"}}};

std::optional<std::int16_t> NumberOfDigits(std::string_view digits) noexcept {
  std::int16_t number = 0;
  const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (failure != std::errc() || end != digits.data() + digits.size()) return std::nullopt;
  return number;
}

}  // namespace

std::string_view ProductText(QBKRNproduct product) noexcept {
  for (const auto& [value, text] : productTexts) {
    if (value == product) return text;
  }
  return {};
}

std::optional<QBKRNproduct> ProductFromText(std::string_view text) noexcept {
  for (const auto& [value, productText] : productTexts) {
    if (productText == text) return value;
  }
  return std::nullopt;
}

std::string PlanStartText(YearMonth start) {
  return fmt::format("{:04}-{:02}", start.year, start.month);
}

std::optional<YearMonth> PlanStartFromText(std::string_view text) noexcept {
  if (text.size() != 7 || text[4] != '-') return std::nullopt;
  const std::optional<std::int16_t> year = NumberOfDigits(text.substr(0, 4));
  const std::optional<std::int16_t> month = NumberOfDigits(text.substr(5));
  if (!year || !month || *year < 1000 || *month < 1 || *month > 12) return std::nullopt;
  return YearMonth{*year, *month};
}

}  // namespace krnqb::plan_file
