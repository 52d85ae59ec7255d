#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "krnqb/enumerations.h"
#include "plan_file/attributes.h"

namespace krnqb::cli {

// Parsers of option values. Each throws Failure (WrongUsage) that names the option, the text and the expected
// form.

/// Parses a month as YYYY-MM, year 1000 to 9999.
YearMonth ParseYearMonth(std::string_view option, std::string_view text);

/// Parses a month, given as 1 to 12 or as its full English name.
std::int16_t ParseMonth(std::string_view option, std::string_view text);

/// Checks that the text is a calendar date as YYYY-MM-DD, and returns it unchanged.
std::string ParseDate(std::string_view option, std::string_view text);

QBKRNproduct ParseProduct(std::string_view option, std::string_view text);

QBKRN_BalancesImport ParseBalances(std::string_view option, std::string_view text);
std::string_view BalancesName(QBKRN_BalancesImport balances);

/// Parses a whole percentage, -32768 to 32767.
std::int16_t ParsePercent(std::string_view option, std::string_view text);

/// Parses a whole number of 0 or more, up to 64 bits.
std::int64_t ParseCount(std::string_view option, std::string_view text);

/// Parses the number of a version in a plan's history, or how many of them are kept: 1 to 999999.
std::int32_t ParseVersionNumber(std::string_view option, std::string_view text);

/// A range of years, both ends included.
struct YearSpan {
  std::int16_t first = 0;
  std::int16_t last = 0;
};

/// Parses "A-B" or one year. Does not check that A precedes B.
YearSpan ParseYears(std::string_view option, std::string_view text);

/// Parses a request number of 32 bits.
std::int32_t ParseRequestNumber(std::string_view option, std::string_view text);

/// Checks that the text is a qbXML version: digits and points.
std::string ParseVersion(std::string_view option, std::string_view text);

/// Checks that the text is a qbXML version that a company file can be created with: 1.0, 1.1 or 2.0.
std::string ParseProcessorVersion(std::string_view option, std::string_view text);

}  // namespace krnqb::cli
