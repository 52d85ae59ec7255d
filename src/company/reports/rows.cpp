#include "company/reports/rows.h"

#include <algorithm>
#include <functional>
#include <string_view>

namespace krnqb::company {
namespace {

void Add(RowAmounts& sum, const RowAmounts& amounts) {
  std::ranges::transform(sum, amounts, sum.begin(), std::plus<>());
}

RowAmounts WithSign(RowAmounts amounts, int sign) {
  for (std::int64_t& amount : amounts) amount *= sign;
  return amounts;
}

class AccountRows {
 public:
  AccountRows(const std::vector<ReportAccount>& accounts,
              const std::vector<std::optional<RowAmounts>>& ownAmounts, std::size_t columns)
      : accounts_(accounts), ownAmounts_(ownAmounts), columns_(columns) {}

  /// Appends the rows of an account and its sub-accounts and returns their sum.
  RowAmounts Append(std::size_t position) {
    const ReportAccount& account = accounts_[position];
    if (!account.children.empty()) return AppendParent(position);
    return AppendOwn(position, account.label);
  }

  std::vector<ReportRow> rows;

 private:
  RowAmounts AppendParent(std::size_t position) {
    const ReportAccount& account = accounts_[position];
    const std::size_t begin = rows.size();
    rows.push_back({ReportRowKind::Text, account.label, std::nullopt, {}});
    RowAmounts sum(columns_);
    for (const std::size_t child : account.children) Add(sum, Append(child));
    Add(sum, AppendOwn(position, account.label + " - Other"));
    if (rows.size() == begin + 1) {
      rows.pop_back();
    } else {
      rows.push_back({ReportRowKind::Subtotal, "Total " + account.label, account.fullName, sum});
    }
    return sum;
  }

  RowAmounts AppendOwn(std::size_t position, const std::string& label) {
    const std::optional<RowAmounts>& own = ownAmounts_[position];
    if (!own) return RowAmounts(columns_);
    rows.push_back({ReportRowKind::Data, label, accounts_[position].fullName, *own});
    return *own;
  }

  const std::vector<ReportAccount>& accounts_;
  const std::vector<std::optional<RowAmounts>>& ownAmounts_;
  std::size_t columns_;
};

std::vector<ReportRow> HeadingRows(const ReportLayout& layout) {
  std::vector<ReportRow> rows;
  for (const std::string_view heading : layout.headings) {
    if (!heading.empty()) rows.push_back({ReportRowKind::Text, std::string(heading), std::nullopt, {}});
  }
  return rows;
}

std::vector<ReportRow> ClosingRows(const ReportLayout& layout, const RowAmounts& sum) {
  std::vector<ReportRow> rows;
  for (const ClosingRow& closing : layout.closings) {
    if (closing.label.empty()) break;
    rows.push_back(
        {ReportRowKind::Subtotal, std::string(closing.label), std::nullopt, WithSign(sum, closing.sign)});
  }
  rows.back().kind = ReportRowKind::Total;
  return rows;
}

}  // namespace

std::vector<ReportRow> BuildReportRows(const ReportLayout& layout, const ReportAccounts& accounts,
                                       const std::vector<std::optional<RowAmounts>>& ownAmounts,
                                       std::size_t columns) {
  AccountRows accountRows(accounts.accounts, ownAmounts, columns);
  RowAmounts sum(columns);
  for (const std::size_t position : accounts.topLevel) Add(sum, accountRows.Append(position));
  if (accountRows.rows.empty()) return {};

  std::vector<ReportRow> rows = HeadingRows(layout);
  std::ranges::move(accountRows.rows, std::back_inserter(rows));
  std::ranges::move(ClosingRows(layout, sum), std::back_inserter(rows));
  return rows;
}

}  // namespace krnqb::company
