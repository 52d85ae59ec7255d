#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace krnqb::company {

/// Parses an amount of money in hundredths of the currency, halves rounded away from 0. Returns nullopt if
/// the text is not a number or exceeds 10^12.
std::optional<std::int64_t> Hundredths(std::string_view amount) noexcept;

/// Formats an amount as in records: "14175.00", "-0.05".
std::string AmountText(std::int64_t hundredths);

}  // namespace krnqb::company
