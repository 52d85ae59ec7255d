#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace krnqb {

/// Converts a text to a double as automation does it with United States settings: blanks around, one sign
/// before or after, parentheses for a negative number, "$", "," between digits, "." and an exponent. Nothing
/// for any other text, the empty one included, and for a number that leaves the range of a double.
std::optional<double> ConvertToDouble(std::string_view text) noexcept;

/// The same, failing with error 13 where there is no number.
double RequireDouble(std::string_view text);

/// The number that a text begins with after leading blanks: sign, digits, ".", exponent; what follows is
/// ignored. 0 when there is none. Error 6 when it leaves the range of a double.
double LeadingNumber(std::string_view text);

/// A number in general form: at most 15 significant digits, no trailing zeros, "." as the decimal point, an
/// exponent from 1E+15 up and below 1E-4 (upper-case E, sign, at least two digits); "0" has no sign.
std::string GeneralNumberText(double number);

/// A number with at most 15 significant digits and never an exponent; "0" has no sign.
std::string PlainNumberText(double number);

/// Converts a number to 16 bits as automation does it, halves to even; error 6 outside -32768 to 32767.
std::int16_t RequireInteger(double number);

}  // namespace krnqb
