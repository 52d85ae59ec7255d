#include "cli/import/notices/request_names.h"

#include <fmt/format.h>

#include <array>

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

}  // namespace

std::string_view RequestName(std::int32_t number) noexcept {
  for (const NamedRequest& named : namedRequests) {
    if (named.number == number) return named.name;
  }
  return {};
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
