#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "profit_and_loss/statement.h"

namespace krnqb::profit_and_loss {

/// Returns the section that a heading such as "Cost of Goods Sold" begins. Case-insensitive, as is every
/// function here.
std::optional<Section> SectionOfHeading(std::string_view label);

/// Returns whether a label is one of the two headings above the sections: "Ordinary Income/Expense" and
/// "Other Income/Expense".
bool IsTopHeading(std::string_view label);

/// A line that closes several sections, or "Total" alone.
enum class ClosingLine : std::uint8_t { GrossProfit, NetOrdinaryIncome, NetOtherIncome, NetIncome, Total };

std::optional<ClosingLine> ClosingLineOf(std::string_view label);

/// Returns what a label such as "Total Rent" or "Total for Rent" totals, or nothing if it is not such a
/// label.
std::optional<std::string_view> TotalledLabel(std::string_view label);

/// Returns whose own amounts a label is of, "Rent" for "Rent - Other", or nothing for another label.
std::optional<std::string_view> OtherOfLabel(std::string_view label);

/// Returns whether a label is that of another one's own amounts, as "Rent - Other" is that of "Rent".
bool IsOtherOf(std::string_view label, std::string_view heading);

/// An account's own name, and its number or "".
struct NumberedName {
  std::string number;
  std::string name;
};

/// Separates a number from a name: "60200 · Rent". With `hyphens` "60200 - Rent" is separated too.
NumberedName SeparateNumber(std::string_view label, bool hyphens);

/// Returns whether a label is like "60200 - Rent", in which the digits may or may not be an account number.
bool HasHyphenNumber(std::string_view label);

}  // namespace krnqb::profit_and_loss
