#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace krnqb::company {

/// The subject of a request.
enum class RequestSubject {
  Accounts,
  Items,
  Transactions,
  Setting,  ///< the company's own record, or its preferences
  Report,   ///< a summary report
  Host,
  Unsupported  ///< a request that company files do not answer
};

/// One request of a message set.
struct CompanyRequest {
  std::string name;                      ///< its element name, such as "BillQueryRq"
  std::optional<std::string> requestId;  ///< nullopt if the request has none
  RequestSubject subject = RequestSubject::Unsupported;
  std::vector<std::string> accountTypes;  ///< of an account query; empty for all
  std::string fromDate;  ///< of a transaction query or a report, YYYY-MM-DD; empty for an open end
  std::string toDate;
  bool includeLines = false;      ///< of a transaction query
  std::string reportType;         ///< of a report, such as "ProfitAndLossStandard"
  std::string accountTypeFilter;  ///< of a report; empty for none
  std::string columns;            ///< of a report, the period of a column, such as "Month"; may be empty
  std::string basis;              ///< of a report, "Accrual", "Cash" or "None"; may be empty

  /// Returns the family of the requested records, such as "Bill".
  std::string_view Family() const noexcept;
};

/// Parses a request document for a processor of that version ("1.0", "1.1" or "2.0"). The document must begin
/// with the exact text of one of the three envelope heads, be ASCII and have its elements in the declared
/// order. Throws Error `company_error::cannotParse` otherwise, or if its version is later than the
/// processor's.
std::vector<CompanyRequest> ParseRequests(std::string_view document, std::string_view processorVersion);

}  // namespace krnqb::company
