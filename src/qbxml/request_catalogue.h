#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace krnqb {

/// The numbers of the requests. Each is also the requestID in the request's message, except in the reports
/// (300 and up), which have none.
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

/// The text in request 330 that the caller replaces with an account type before sending it.
inline constexpr std::string_view accountTypePlaceholder = "AccountTypeFilterValue";

/// Returns the qbXML document of a request. Dates are year-month-day, or empty for an open end, and are
/// inserted without escaping; requests without dates ignore them. For an unknown number, returns a document
/// without a message.
std::string BuildRequest(std::int32_t number, std::string_view fromDate, std::string_view toDate);

/// Returns the transaction date filter, or an empty text if both dates are empty. A single empty date leaves
/// its end open.
std::string BuildTxnDateRangeFilter(std::string_view fromDate, std::string_view toDate);

}  // namespace krnqb
