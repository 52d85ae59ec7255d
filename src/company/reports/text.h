#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "company/reports/rows.h"

namespace krnqb::company {

/// The contents of a summary report.
struct SummaryReport {
  std::string_view title;
  std::string subtitle;
  std::vector<std::string> columnTitles;  ///< of the amounts, which follow the column of labels
  std::vector<ReportRow> rows;
};

/// Appends a report in QuickBooks' form, a complete ReportRet element. Every column of every row is written,
/// even without postings.
void AppendReport(std::string& output, const SummaryReport& report);

}  // namespace krnqb::company
