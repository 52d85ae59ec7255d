#include "cli/import/request_names.h"

#include <fmt/format.h>

#include <array>
#include <charconv>

#include "qbxml/request_catalogue.h"

namespace krnqb::cli {
namespace {

struct NamedRequest {
  std::int32_t number;
  std::string_view name;
};

constexpr std::array namedRequests{NamedRequest{request_number::incomeAccounts, "income accounts"},
                                   NamedRequest{request_number::costAccounts, "cost-of-goods accounts"},
                                   NamedRequest{request_number::expenseAccounts, "expense accounts"},
                                   NamedRequest{request_number::undatedBills, "bills, all dates"},
                                   NamedRequest{request_number::bills, "bills"},
                                   NamedRequest{request_number::checks, "checks"},
                                   NamedRequest{request_number::creditCardCharges, "credit-card charges"},
                                   NamedRequest{request_number::invoices, "invoices"},
                                   NamedRequest{request_number::salesReceipts, "sales receipts"},
                                   NamedRequest{request_number::items, "items"},
                                   NamedRequest{request_number::allAccounts, "all accounts"},
                                   NamedRequest{request_number::host, "host and versions"},
                                   NamedRequest{request_number::company, "company"},
                                   NamedRequest{request_number::preferences, "preferences"},
                                   NamedRequest{request_number::incomeByMonth, "income by month"},
                                   NamedRequest{request_number::expenseByMonth, "expenses by month"},
                                   NamedRequest{request_number::costByMonth, "cost of sales by month"},
                                   NamedRequest{request_number::balanceSheetByType, "balance sheet by type"}};

// Reports carry no requestID; what they are restricted to tells them apart.
constexpr std::array reportsByFilter{NamedRequest{request_number::incomeByMonth, "OrdinaryIncome"},
                                     NamedRequest{request_number::expenseByMonth, "OrdinaryExpense"},
                                     NamedRequest{request_number::costByMonth, "CostOfSales"}};

// The text between two marks, empty when they are not there.
std::string_view Between(std::string_view text, std::string_view before, std::string_view after) {
  const std::size_t mark = text.find(before);
  if (mark == std::string_view::npos) return {};
  const std::string_view rest = text.substr(mark + before.size());
  const std::size_t end = rest.find(after);
  return end == std::string_view::npos ? std::string_view() : rest.substr(0, end);
}

std::optional<std::int32_t> NumberOf(std::string_view document) {
  const std::string_view requestId = Between(document, "requestID=\"", "\"");
  std::int32_t number = 0;
  const auto [end, fault] = std::from_chars(requestId.data(), requestId.data() + requestId.size(), number);
  if (fault == std::errc()) return number;
  const std::string_view filter = Between(document, "<AccountTypeFilter>", "</AccountTypeFilter>");
  if (filter.empty()) return std::nullopt;
  for (const NamedRequest& report : reportsByFilter) {
    if (report.name == filter) return report.number;
  }
  return request_number::balanceSheetByType;
}

std::string_view DateIn(std::string_view document, std::string_view which) {
  const std::string transactions = fmt::format("<{}TxnDate>", which);
  const std::string report = fmt::format("<{}ReportDate>", which);
  const std::string_view date = Between(document, transactions, "</");
  return date.empty() ? Between(document, report, "</") : date;
}

}  // namespace

std::string_view RequestName(std::int32_t number) noexcept {
  for (const NamedRequest& named : namedRequests) {
    if (named.number == number) return named.name;
  }
  return {};
}

Place PlaceOfRequest(std::string_view document) {
  return {.operation = "ProcessRequest",
          .request = NumberOf(document),
          .fromDate = std::string(DateIn(document, "From")),
          .toDate = std::string(DateIn(document, "To"))};
}

std::string RequestText(const Place& place) {
  std::string text = "a request";
  if (place.request) {
    text = fmt::format("request {}", *place.request);
    if (const std::string_view name = RequestName(*place.request); !name.empty())
      text += fmt::format(" ({})", name);
  }
  if (place.fromDate.empty() && place.toDate.empty()) return text;
  return text + fmt::format(" for {} to {}", place.fromDate, place.toDate);
}

}  // namespace krnqb::cli
