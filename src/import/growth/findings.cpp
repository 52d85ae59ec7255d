#include "import/growth/findings.h"

#include <utility>

#include "plan/table_identifiers.h"
#include "support/number_text.h"
#include "support/warning_report.h"

namespace krnqb {
namespace {

double SumOfMonths(const cSubtotals& account) {
  double sum = 0;
  for (std::int16_t month = 1; month <= cSubtotals::monthCount; ++month) sum += account.SubTotal(month);
  return sum;
}

bool HasAmounts(const cSubtotals& account) {
  for (std::int16_t month = 1; month <= cSubtotals::monthCount; ++month) {
    if (account.SubTotal(month) != 0) return true;
  }
  return false;
}

// Returns whether a row is called something: its first cell is neither empty nor a number.
bool IsName(const std::string& text) {
  return !text.empty() && text != emptyCellText && !ConvertToDouble(text);
}

}  // namespace

void GrowthFindings::RowOf(const cSubtotals& account, const std::string& name) {
  const auto [first, added] = rows_.emplace(&account, name);
  if (added || !HasAmounts(account)) return;
  Warn({.code = WarningCode::RowTwice, .name = name, .other = first->second, .amount = SumOfMonths(account)});
}

void GrowthFindings::SummedAsDepreciation(const cSubtotals& account) {
  if (depreciation_.insert(&account).second || !HasAmounts(account)) return;
  const std::string row(depreciationKeyword);
  Warn({.code = WarningCode::RowTwice, .name = row, .other = row, .amount = SumOfMonths(account)});
}

void GrowthFindings::Cells(const std::string& name, const cSubtotals& amounts, std::size_t cellCount,
                           std::size_t firstMonth) {
  Finding finding{.code = WarningCode::ShortRow, .name = name, .amount = 0};
  for (std::int16_t month = 1; month <= cSubtotals::monthCount; ++month) {
    const bool written = firstMonth + static_cast<std::size_t>(month) - 1 < cellCount;
    if (written || amounts.SubTotal(month) == 0) continue;
    finding.months.push_back(month);
    *finding.amount += amounts.SubTotal(month);
  }
  if (!finding.months.empty()) Warn(std::move(finding));
}

void GrowthFindings::ActualRow(const std::string& name, const cSubtotals& amounts, const XmlElement& row,
                               const std::vector<XmlElement>& cells) {
  if (!row) {
    if (HasAmounts(amounts))
      Warn({.code = WarningCode::TwinMissing, .name = name, .amount = SumOfMonths(amounts)});
    return;
  }
  Cells(name, amounts, cells.size(), 1);
  const std::string actualName = cells.empty() ? std::string() : cells[0].Text();
  if (!IsName(actualName) || FoldedKey(actualName) == FoldedKey(name)) return;
  Warn({.code = WarningCode::TwinMisaligned,
        .name = name,
        .other = actualName,
        .amount = SumOfMonths(amounts)});
}

void GrowthFindings::NoStartRow(std::string_view group, const std::string& startRow) {
  Warn({.code = WarningCode::NoStartRow, .name = std::string(group), .text = startRow});
}

void GrowthFindings::Finish(const SubtotalCollection& accounts,
                            const std::unordered_set<std::string>& notRequested) {
  for (const cSubtotals& account : accounts) {
    if (!HasAmounts(account)) continue;
    const bool summed = depreciation_.contains(&account);
    const bool hasRow = rows_.contains(&account);
    if (hasRow && summed) {
      Warn({.code = WarningCode::DepreciationAndOwnRow,
            .name = account.Description(),
            .amount = SumOfMonths(account)});
    } else if (!hasRow && !summed && !notRequested.contains(FoldedKey(account.Description()))) {
      Warn({.code = WarningCode::NoRow, .name = account.Description(), .amount = SumOfMonths(account)});
    }
  }
}

void GrowthFindings::Warn(Finding finding) noexcept {
  ReportWarning(observer_, place_, [&] { return std::move(finding); });
}

}  // namespace krnqb
