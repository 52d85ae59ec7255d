#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace krnqb::company {

enum class ReportKind { ProfitAndLoss, BalanceSheet };

/// The side on which an account type's amounts are shown as positive.
enum class NormalSide { Debit, Credit };

/// A row with the sum of the accounts above it, or that sum negated.
struct ClosingRow {
  std::string_view label;
  int sign = 1;  ///< 1 or -1
};

/// The rows around the accounts of one type in a report. Unused elements at the end are empty.
struct ReportLayout {
  std::string_view accountType;
  ReportKind report;
  NormalSide normalSide;
  std::array<std::string_view, 4> headings;  ///< the outermost first
  std::array<ClosingRow, 4> closings;        ///< the innermost first; the last is the report's total
};

/// Returns the report of a GeneralSummaryReportType; nullopt if company files do not compute it.
std::optional<ReportKind> FindReportKind(std::string_view reportType) noexcept;

/// Returns the account type that an AccountTypeFilter selects: a profit and loss filter or an account type
/// itself; nullopt for any other text.
std::optional<std::string_view> FilteredAccountType(std::string_view filter) noexcept;

/// Returns the layout of a type's accounts in a report; null if the report shows no accounts of that type.
const ReportLayout* FindReportLayout(ReportKind report, std::string_view accountType) noexcept;

}  // namespace krnqb::company
