#include "company/reports/rows.h"

#include <algorithm>
#include <numeric>
#include <string_view>
#include <utility>

#include "company/records/amount.h"

namespace krnqb::company {
namespace {

RowAmounts WithSign(RowAmounts amounts, int sign) {
  if (sign > 0) return amounts;
  RowAmounts negative(amounts.size());
  SubtractAmounts(negative, amounts);
  return negative;
}

class AccountRows {
 public:
  AccountRows(const std::vector<ReportAccount>& accounts,
              const std::vector<std::optional<RowAmounts>>& ownAmounts, std::size_t columns)
      : accounts_(accounts), ownAmounts_(ownAmounts), columns_(columns) {}

  /// Appends the rows of an account and its sub-accounts and returns their sum. Without recursion: accounts
  /// may be nested to any depth.
  RowAmounts Append(std::size_t position) {
    RowAmounts sum(columns_);
    Open(position);
    while (!open_.empty()) {
      OpenParent& parent = open_.back();
      const ReportAccount& account = accounts_[parent.position];
      if (parent.nextChild < account.children.size()) {
        Open(account.children[parent.nextChild++]);
        continue;
      }
      RowAmounts ended = Close();
      AddAmounts(open_.empty() ? sum : open_.back().sum, ended);
    }
    return sum;
  }

  std::vector<ReportRow> rows;

 private:
  // An account whose sub-accounts are being appended.
  struct OpenParent {
    std::size_t position;
    std::size_t firstRow;
    std::size_t nextChild;
    RowAmounts sum;
  };

  void Open(std::size_t position) {
    open_.push_back({position, rows.size(), 0, RowAmounts(columns_)});
    const ReportAccount& account = accounts_[position];
    if (account.children.empty()) return;
    rows.push_back({ReportRowKind::Text, account.label, std::nullopt, {}});
  }

  // Ends the account opened last and returns its sum.
  RowAmounts Close() {
    OpenParent parent = std::move(open_.back());
    open_.pop_back();
    const ReportAccount& account = accounts_[parent.position];
    const bool hasChildren = !account.children.empty();
    AppendOwn(parent.position, hasChildren ? account.label + " - Other" : account.label, parent.sum);
    if (!hasChildren) return std::move(parent.sum);
    if (rows.size() == parent.firstRow + 1) {
      rows.pop_back();
    } else {
      rows.push_back({ReportRowKind::Subtotal, "Total " + account.label, account.fullName, parent.sum});
    }
    return std::move(parent.sum);
  }

  void AppendOwn(std::size_t position, std::string label, RowAmounts& sum) {
    const std::optional<RowAmounts>& own = ownAmounts_[position];
    if (!own) return;
    rows.push_back({ReportRowKind::Data, std::move(label), accounts_[position].fullName, *own});
    AddAmounts(sum, *own);
  }

  std::vector<OpenParent> open_;  // the outermost first
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

void AddAmounts(RowAmounts& sums, const RowAmounts& amounts) {
  std::ranges::transform(sums, amounts, sums.begin(), Sum);
}

void SubtractAmounts(RowAmounts& amounts, const RowAmounts& less) {
  std::ranges::transform(amounts, less, amounts.begin(), Difference);
}

std::int64_t TotalOf(const RowAmounts& amounts) {
  return std::accumulate(amounts.begin(), amounts.end(), std::int64_t{0}, Sum);
}

std::vector<ReportRow> BuildReportRows(const ReportLayout& layout, const ReportAccounts& accounts,
                                       const std::vector<std::optional<RowAmounts>>& ownAmounts,
                                       std::size_t columns) {
  AccountRows accountRows(accounts.accounts, ownAmounts, columns);
  RowAmounts sum(columns);
  for (const std::size_t position : accounts.topLevel) AddAmounts(sum, accountRows.Append(position));
  if (accountRows.rows.empty()) return {};

  std::vector<ReportRow> rows = HeadingRows(layout);
  std::ranges::move(accountRows.rows, std::back_inserter(rows));
  std::ranges::move(ClosingRows(layout, sum), std::back_inserter(rows));
  return rows;
}

}  // namespace krnqb::company
