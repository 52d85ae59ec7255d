#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace krnqb::company {

/// An amount of money in hundredths of the currency, halves rounded away from 0. Nothing for a text that is
/// no number, or one beyond a million millions.
std::optional<std::int64_t> Hundredths(std::string_view amount) noexcept;

/// The amount as records write it: "14175.00", "-0.05".
std::string AmountText(std::int64_t hundredths);

}  // namespace krnqb::company
