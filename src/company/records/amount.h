#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace krnqb::company {

/// Parses an amount of money in hundredths of the currency, halves rounded away from 0. Returns nullopt if
/// the text is not a number or exceeds 10^12.
std::optional<std::int64_t> Hundredths(std::string_view amount) noexcept;

/// Add and subtract amounts in hundredths. Throw Error 6, with a description, if the result exceeds 64 bits.
std::int64_t Sum(std::int64_t amount, std::int64_t more);
std::int64_t Difference(std::int64_t amount, std::int64_t less);

/// Formats an amount as in records: "14175.00", "-0.05".
std::string AmountText(std::int64_t hundredths);

}  // namespace krnqb::company
