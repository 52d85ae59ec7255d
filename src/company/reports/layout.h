#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace krnqb::company {

enum class ReportKind { ProfitAndLoss, BalanceSheet };

/// The side on which an account of a type usually stands: there its amounts are shown as positive.
enum class NormalSide { Debit, Credit };

/// A row that sums up the accounts above it, by themselves or with their sign changed.
struct ClosingRow {
  std::string_view label;
  int sign = 1;  ///< 1 or -1
};

/// What stands around the accounts of one type in a report. Unused places at the end are empty.
struct ReportLayout {
  std::string_view accountType;
  ReportKind report;
  NormalSide normalSide;
  std::array<std::string_view, 4> headings;  ///< the outermost first
  std::array<ClosingRow, 4> closings;        ///< the innermost first; the last of them is the report's total
};

/// The report that a GeneralSummaryReportType names; nothing when it is none that a company file computes.
std::optional<ReportKind> FindReportKind(std::string_view reportType) noexcept;

/// The account type that an AccountTypeFilter stands for: the filters of profit and loss and the types
/// themselves; nothing for any other text.
std::optional<std::string_view> FilteredAccountType(std::string_view filter) noexcept;

/// The layout of a type's accounts in a report; null when the report shows no accounts of that type.
const ReportLayout* FindReportLayout(ReportKind report, std::string_view accountType) noexcept;

}  // namespace krnqb::company
