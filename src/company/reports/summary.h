#pragma once

#include <optional>
#include <string>

#include "company/records/database.h"
#include "company/records/request.h"
#include "company/reports/text.h"

namespace krnqb::company {

/// Why a report is refused, as the status of its answer says it.
struct ReportRefusal {
  int code = 0;
  std::string message;
};

/// Nothing when the report that is asked for can be computed: profit and loss by month, or the balance sheet,
/// over the accounts of one type.
std::optional<ReportRefusal> FindReportRefusal(const CompanyRequest& request);

/// Computes a report that is not refused, from what the company's transactions post. An open end of its
/// period is the month of the company's first or last transaction.
///
/// Profit and loss shows, month by month, the accounts that something was posted to, and their sums over the
/// months when there are several. The balance sheet shows the accounts whose balance as of the period's last
/// day is not 0: the balance of the account's record less what was posted after that day.
SummaryReport ComputeReport(const Database& database, const CompanyRequest& request);

}  // namespace krnqb::company
