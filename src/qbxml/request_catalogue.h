#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace krnqb {

/// The requests of the catalogue; each number is also the requestID that its message carries.
namespace request_number {
inline constexpr std::int32_t incomeAccounts = 1;
inline constexpr std::int32_t costAccounts = 2;
inline constexpr std::int32_t expenseAccounts = 4;
inline constexpr std::int32_t undatedBills = 9;
inline constexpr std::int32_t bills = 10;
inline constexpr std::int32_t checks = 11;
inline constexpr std::int32_t creditCardCharges = 12;
inline constexpr std::int32_t invoices = 20;
inline constexpr std::int32_t salesReceipts = 21;
inline constexpr std::int32_t items = 50;
inline constexpr std::int32_t allAccounts = 60;
inline constexpr std::int32_t host = 100;
inline constexpr std::int32_t company = 101;
inline constexpr std::int32_t preferences = 102;
inline constexpr std::int32_t incomeByMonth = 300;
inline constexpr std::int32_t expenseByMonth = 310;
inline constexpr std::int32_t costByMonth = 320;
inline constexpr std::int32_t balanceSheetByType = 330;
}  // namespace request_number

/// What request 330 holds in place of the account type, which the caller fills in before sending it.
inline constexpr std::string_view accountTypePlaceholder = "AccountTypeFilterValue";

/// The whole qbXML document of a request. Dates are year-month-day, or empty for none, and stand in the
/// document as they are given; requests that take no dates ignore them. An unknown number gives a document
/// without a message.
std::string BuildRequest(std::int32_t number, std::string_view fromDate, std::string_view toDate);

/// The transaction date filter; empty when both dates are. Either date alone leaves the other end open.
std::string BuildTxnDateRangeFilter(std::string_view fromDate, std::string_view toDate);

}  // namespace krnqb
