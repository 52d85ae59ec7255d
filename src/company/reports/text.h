#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "company/reports/rows.h"

namespace krnqb::company {

/// A summary report before it is written down.
struct SummaryReport {
  std::string_view title;
  std::string subtitle;
  std::vector<std::string> columnTitles;  ///< of the columns of amounts, which come after that of the labels
  std::vector<ReportRow> rows;
};

/// Appends a report as QuickBooks answers it, from "<ReportRet>" to its end. Every column of every row is
/// written, also where nothing was posted.
void AppendReport(std::string& output, const SummaryReport& report);

}  // namespace krnqb::company
