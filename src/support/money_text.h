#pragma once

#include <cstdint>
#include <string>

namespace krnqb {

/// How exactly an amount is shown: with two decimals, or rounded to whole units.
enum class MoneyForm : std::uint8_t { Cents, WholeUnits };

/// Formats an amount for people, with "," between thousands: "-1,234.50", "0.00". From 1E+15 up it has an
/// exponent; a sum that overflowed is "out of range".
std::string MoneyText(double amount, MoneyForm form = MoneyForm::Cents);

}  // namespace krnqb
