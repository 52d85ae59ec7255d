#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "krnqb/enumerations.h"
#include "plan_file/attributes.h"

namespace krnqb::cli {

// The values of options, read from their texts. Each fails as wrong usage that names the option, the text and
// what it should have been.

/// A month of a year as YYYY-MM, the year 1000 to 9999.
plan_file::PlanStart ParseYearMonth(std::string_view option, std::string_view text);

/// A month, 1 to 12: its number or its full English name.
std::int16_t ParseMonth(std::string_view option, std::string_view text);

/// A date as YYYY-MM-DD that the calendar has, given back as it is.
std::string ParseDate(std::string_view option, std::string_view text);

QBKRNproduct ParseProduct(std::string_view option, std::string_view text);

QBKRN_BalancesImport ParseBalances(std::string_view option, std::string_view text);
std::string_view BalancesName(QBKRN_BalancesImport balances);

/// A whole number of percent, -32768 to 32767.
std::int16_t ParsePercent(std::string_view option, std::string_view text);

/// A whole number from 0 up to 64 bits.
std::int64_t ParseCount(std::string_view option, std::string_view text);

/// The first and the last of some years.
struct YearSpan {
  std::int16_t first = 0;
  std::int16_t last = 0;
};

/// Years as "A-B", or one year; their order is not checked.
YearSpan ParseYears(std::string_view option, std::string_view text);

/// A request's number.
std::int32_t ParseRequestNumber(std::string_view option, std::string_view text);

/// A qbXML version: digits and points.
std::string ParseVersion(std::string_view option, std::string_view text);

/// A qbXML version that a company's processor can have.
std::string ParseProcessorVersion(std::string_view option, std::string_view text);

}  // namespace krnqb::cli
