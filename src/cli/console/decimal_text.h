#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace krnqb::cli {

/// Returns an amount of money as a decimal number for programs, such as "28414.80" or "-0.125": at most 15
/// significant digits, as in the cells of a plan, at least two decimals, no exponent and no sign for zero.
/// `amount` must be finite.
std::string DecimalText(double amount);

/// Returns an amount that is given as a text in the same form. A decimal number keeps all of its digits.
/// Returns nothing if the text is not a number, see `ConvertToDouble`.
std::optional<std::string> DecimalText(std::string_view amount);

}  // namespace krnqb::cli
