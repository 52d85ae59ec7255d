#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ledger/records.h"
#include "support/year_month.h"

namespace krnqb::cli {

/// Returns an amount with two decimals if these are all that it has, otherwise with up to 15 digits.
std::string ExactMoneyText(double amount);

/// Returns the kind of a transaction, such as "Credit card charge", from the request that answers it.
std::string_view KindText(std::int32_t request) noexcept;

/// Returns what a booking comes from: the kind of its transaction, "Report", "Balance",
/// "Account" or "Figure".
std::string_view SourceText(const ledger::LedgerBooking& booking,
                            const std::optional<ledger::LedgerDocument>& document) noexcept;

/// Returns a rule in words, such as "Charged to the expense account".
std::string_view RuleText(BookingRule rule) noexcept;

/// Returns a rule as part of a sentence about one amount, such as "charged to the expense account".
std::string_view RuleClause(BookingRule rule) noexcept;

/// Returns how the amount was computed, such as "3 x 2.50" or "12,000.00 / 12 months", or else the number as
/// QuickBooks answered it.
std::string AmountAsRead(const ledger::LedgerBooking& booking);

/// Returns the stable word of a group of sums, such as "cost-of-goods".
std::string_view GroupWord(AmountGroup group) noexcept;

/// Returns the month of a figure of the imported year, or of past performance if it is a single month.
/// Nullopt if it is a year, or if the ledger does not say when the year begins.
std::optional<YearMonth> MonthOfFigure(const ledger::LedgerFacts& facts, bool past, std::int16_t number);

/// Returns a figure's month or year for people, such as "March 2002" or "2001".
std::string PeriodText(const ledger::LedgerFacts& facts, bool past, std::int16_t number);

/// Returns the title of a cell's table, such as "Planned expenses".
std::string PlaceText(const ledger::LedgerCell& cell);

/// Returns `lead` and the names, separated by commas, in lines of at most `width` columns as far as that is
/// possible. All lines are indented by `indent`, those after the first as far as the first name.
std::string HangingNames(std::string_view indent, std::string_view lead,
                         const std::vector<std::string>& names, std::size_t width);

}  // namespace krnqb::cli
