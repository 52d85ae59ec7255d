#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace krnqb {

/// Converts a text to a double as automation does with United States settings: it accepts surrounding white
/// space, one leading or trailing sign, parentheses for a negative number, "$", "," between digits, "." and
/// an exponent. Returns nothing for any other text, including the empty one, and for a number that overflows.
std::optional<double> ConvertToDouble(std::string_view text) noexcept;

/// Converts a text like `ConvertToDouble`, but throws Error 13 if it is not a number.
double RequireDouble(std::string_view text);

/// Returns the number at the start of a text, or 0 if it does not start with one. It may have a sign, "." and
/// an exponent; leading white space and whatever follows the number are ignored. Throws Error 6 if the number
/// overflows.
double LeadingNumber(std::string_view text);

/// Returns whether `LeadingNumber` takes a text at its whole value: the text is blank, or it is a number that
/// `ConvertToDouble` reads alike. "1,234.56", "(5.00)" and "5 units" are not.
bool ReadsWhole(std::string_view text) noexcept;

/// Formats a number with at most 15 significant digits, no trailing zeros and "." as the decimal point. From
/// 1E+15 up and below 1E-4 it has an exponent: "E", a sign and at least two digits. Zero has no sign.
std::string GeneralNumberText(double number);

/// Formats a number like `GeneralNumberText`, but never with an exponent.
std::string PlainNumberText(double number);

/// Rounds a number to 16 bits as automation does, halves to even. Throws Error 6 if the result is outside
/// -32768 to 32767 or `number` is NaN.
std::int16_t RequireInteger(double number);

}  // namespace krnqb
