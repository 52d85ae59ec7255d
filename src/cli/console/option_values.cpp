#include "cli/console/option_values.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

#include "cli/console/failure.h"
#include "plan_file/history/entry.h"
#include "support/date.h"

namespace krnqb::cli {
namespace {

struct NamedBalances {
  std::string_view name;
  QBKRN_BalancesImport balances;
};
constexpr std::array balanceChoices{
    NamedBalances{"none", BalImport_None}, NamedBalances{"planned", BalImport_Planned},
    NamedBalances{"actual", BalImport_Actual}, NamedBalances{"all", BalImport_All}};

constexpr std::array<std::string_view, 3> processorVersions{"1.0", "1.1", "2.0"};

Failure NotA(std::string_view option, std::string_view text, std::string_view what,
             std::string_view whatToDo) {
  return WrongUsage(fmt::format("{} \"{}\" is not {}", option, text, what), whatToDo);
}

template <typename Integer>
std::optional<Integer> WholeNumber(std::string_view text) {
  Integer number = 0;
  const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (fault != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

bool AllDigits(std::string_view text) {
  return text.find_first_not_of("0123456789") == std::string_view::npos;
}

bool IsDate(std::string_view text) {
  if (text.size() != 10 || text[7] != '-' || !AllDigits(text.substr(8))) return false;
  const auto month = plan_file::PlanStartFromText(text.substr(0, 7));
  const auto day = WholeNumber<std::int16_t>(text.substr(8));
  return month && day && *day >= 1 && *day <= DaysInCalendarMonth(month->month, month->year);
}

}  // namespace

YearMonth ParseYearMonth(std::string_view option, std::string_view text) {
  const auto yearMonth = plan_file::PlanStartFromText(text);
  if (!yearMonth) throw NotA(option, text, "a year and month", "write YYYY-MM, for example 2003-01");
  return *yearMonth;
}

std::int16_t ParseMonth(std::string_view option, std::string_view text) {
  const auto number = AllDigits(text) ? WholeNumber<std::int16_t>(text) : MonthNumber(text);
  if (!number || *number < 1 || *number > 12) {
    throw NotA(option, text, "a month", "give 1 to 12 or an English name such as January");
  }
  return *number;
}

std::string ParseDate(std::string_view option, std::string_view text) {
  if (!IsDate(text)) throw NotA(option, text, "a date", "write YYYY-MM-DD, for example 2002-01-31");
  return std::string(text);
}

QBKRNproduct ParseProduct(std::string_view option, std::string_view text) {
  const auto product = plan_file::ProductFromText(text);
  if (!product) throw NotA(option, text, "a product", "give ald, bri or cor");
  return *product;
}

QBKRN_BalancesImport ParseBalances(std::string_view option, std::string_view text) {
  for (const NamedBalances& named : balanceChoices) {
    if (named.name == text) return named.balances;
  }
  throw NotA(option, text, "one of the choices", "give none, planned, actual or all");
}

std::string_view BalancesName(QBKRN_BalancesImport balances) {
  for (const NamedBalances& named : balanceChoices) {
    if (named.balances == balances) return named.name;
  }
  return "unknown";
}

std::int16_t ParsePercent(std::string_view option, std::string_view text) {
  const auto percent = WholeNumber<std::int16_t>(text);
  if (!percent)
    throw NotA(option, text, "a whole percentage", "give a number from -32768 to 32767, for example 5");
  return *percent;
}

std::int64_t ParseCount(std::string_view option, std::string_view text) {
  const auto count = WholeNumber<std::int64_t>(text);
  if (!count || *count < 0)
    throw NotA(option, text, "a whole number of 0 or more", "give a number such as 1000");
  return *count;
}

std::int32_t ParseVersionNumber(std::string_view option, std::string_view text) {
  const auto number = WholeNumber<std::int32_t>(text);
  if (!number || *number < 1 || *number > plan_file::highestVersion) {
    throw NotA(option, text, "a whole number of 1 or more", "give a number such as 3");
  }
  return *number;
}

YearSpan ParseYears(std::string_view option, std::string_view text) {
  const std::size_t dash = std::min(text.find('-'), text.size());
  const auto first = WholeNumber<std::int16_t>(text.substr(0, dash));
  const auto last = dash == text.size() ? first : WholeNumber<std::int16_t>(text.substr(dash + 1));
  if (!first || !last) throw NotA(option, text, "a range of years", "write 2001-2002, or one year");
  return {*first, *last};
}

std::int32_t ParseRequestNumber(std::string_view option, std::string_view text) {
  const auto number = WholeNumber<std::int32_t>(text);
  if (!number) throw NotA(option, text, "a request number", "give a whole number, for example 10");
  return *number;
}

std::string ParseVersion(std::string_view option, std::string_view text) {
  if (text.empty() || text.find_first_not_of("0123456789.") != std::string_view::npos) {
    throw NotA(option, text, "a qbXML version", "give a version such as 1.1");
  }
  return std::string(text);
}

std::string ParseProcessorVersion(std::string_view option, std::string_view text) {
  for (const std::string_view version : processorVersions) {
    if (version == text) return std::string(text);
  }
  throw NotA(option, text, "a supported qbXML version", "give 1.0, 1.1 or 2.0");
}

}  // namespace krnqb::cli
