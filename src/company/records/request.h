#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace krnqb::company {

/// What a request asks for.
enum class RequestSubject {
  Accounts,
  Items,
  Transactions,
  Setting,  ///< the company's own record, or its preferences
  Report,   ///< a summary report
  Host,
  Unsupported  ///< nothing that the company answers
};

/// One request of a message set.
struct CompanyRequest {
  std::string name;                      ///< its element name, such as "BillQueryRq"
  std::optional<std::string> requestId;  ///< absent when the request has none
  RequestSubject subject = RequestSubject::Unsupported;
  std::vector<std::string> accountTypes;  ///< of an account query; empty for all
  std::string fromDate;  ///< of a transaction query or a report, year-month-day; empty for an open end
  std::string toDate;
  bool includeLines = false;      ///< of a transaction query
  std::string reportType;         ///< of a report, such as "ProfitAndLossStandard"
  std::string accountTypeFilter;  ///< of a report; empty for none
  std::string columns;  ///< of a report, what it has a column for, such as "Month"; empty for nothing

  /// The family of the records asked for, such as "Bill".
  std::string_view Family() const noexcept;
};

/// The requests in a request document for a processor of that version ("1.0", "1.1" or "2.0"). The document
/// begins with the very text of one of the three envelope heads and is plain ASCII; elements stand in their
/// fixed order. Error `company_error::cannotParse` when it is anything else, or of a later version than the
/// processor's.
std::vector<CompanyRequest> ParseRequests(std::string_view document, std::string_view processorVersion);

}  // namespace krnqb::company
