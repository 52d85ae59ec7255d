#pragma once

#include <optional>
#include <string>

#include "company/records/database.h"
#include "company/records/request.h"
#include "company/reports/text.h"

namespace krnqb::company {

/// Why a report is refused, as in the status of its answer.
struct ReportRefusal {
  int code = 0;
  std::string message;
};

/// Returns nullopt if the requested report can be computed: profit and loss of at most 240 months, or the
/// balance sheet, on the accounts of one type and on the accrual basis.
std::optional<ReportRefusal> FindReportRefusal(const Database& database, const CompanyRequest& request);

/// Computes a report that is not refused from the company's postings. An open end of its period becomes the
/// month of the company's first or last transaction.
///
/// Profit and loss shows the accounts with postings month by month, with a sum over the months if there are
/// several. The balance sheet shows the accounts with a nonzero balance as of the period's last day: the
/// balance of the account's record less later postings.
SummaryReport ComputeReport(const Database& database, const CompanyRequest& request);

}  // namespace krnqb::company
