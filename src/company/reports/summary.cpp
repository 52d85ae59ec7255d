#include "company/reports/summary.h"

#include <fmt/format.h>

#include "company/records/amount.h"
#include "company/records/ledger.h"
#include "company/reports/accounts.h"
#include "company/reports/period.h"

namespace krnqb::company {
namespace {

constexpr int unsupportedMessage = 1030;
constexpr int invalidDateRange = 3030;
constexpr int invalidFieldValue = 3210;

// Twenty years. Every row has an amount per month.
constexpr int mostMonths = 240;

constexpr std::string_view wholeTime = "All Transactions";

// The amounts of each account itself.
using OwnAmounts = std::vector<std::optional<RowAmounts>>;

std::int64_t Shown(std::int64_t amount, const ReportLayout& layout) {
  return layout.normalSide == NormalSide::Debit ? amount : Difference(0, amount);
}

// Returns the first and last day of a report by month, or nothing if the company has no transactions that
// could end an open period.
std::optional<LedgerDays> DaysAsked(const Database& database, const CompanyRequest& request) {
  LedgerDays asked{request.fromDate, request.toDate};
  if (!asked.first.empty() && !asked.last.empty()) return asked;
  const std::optional<LedgerDays> days = ReadLedgerDays(database);
  if (!days) return std::nullopt;
  if (asked.first.empty()) asked.first = FirstDayOfMonth(days->first);
  if (asked.last.empty()) asked.last = LastDayOfMonth(days->last);
  return asked;
}

ReportPeriod MonthsAsked(const Database& database, const CompanyRequest& request) {
  const std::optional<LedgerDays> days = DaysAsked(database, request);
  if (!days) return {std::string(wholeTime), {}};
  ReportPeriod period = MonthsBetween(days->first, days->last);
  if (period.columns.empty()) period.subtitle = wholeTime;
  return period;
}

ReportPeriod DayAsked(const CompanyRequest& request) {
  if (!request.toDate.empty()) return AsOf(request.toDate);
  return {std::string(wholeTime), {{"TOTAL", {}, {}}}};
}

OwnAmounts AmountsByMonth(const Database& database, const ReportLayout& layout, const ReportAccounts& list,
                          const ReportPeriod& period) {
  OwnAmounts amounts(list.accounts.size());
  LedgerReader ledger(database, layout.accountType);
  for (std::size_t column = 0; column < period.columns.size(); ++column) {
    const ReportColumn& month = period.columns[column];
    const PostedAmounts posted = ledger.Between(month.firstDay, month.lastDay);
    for (std::size_t account = 0; account < list.accounts.size(); ++account) {
      const auto found = posted.find(list.accounts[account].key);
      if (found == posted.end()) continue;
      std::optional<RowAmounts>& own = amounts[account];
      if (!own) own.emplace(period.columns.size());
      own->at(column) = Shown(found->second, layout);
    }
  }
  return amounts;
}

OwnAmounts BalancesAsOf(const Database& database, const ReportLayout& layout, const ReportAccounts& list,
                        const std::string& day) {
  OwnAmounts amounts(list.accounts.size());
  const PostedAmounts later =
      day.empty() ? PostedAmounts() : LedgerReader(database, layout.accountType).After(day);
  for (std::size_t account = 0; account < list.accounts.size(); ++account) {
    const auto found = later.find(list.accounts[account].key);
    const std::int64_t postedLater = found == later.end() ? 0 : Shown(found->second, layout);
    const std::int64_t balance = Difference(list.accounts[account].balance.value_or(0), postedLater);
    if (balance != 0) amounts[account] = RowAmounts{balance};
  }
  return amounts;
}

void AddTotals(OwnAmounts& amounts) {
  for (std::optional<RowAmounts>& own : amounts) {
    if (own) own->push_back(TotalOf(*own));
  }
}

}  // namespace

std::optional<ReportRefusal> FindReportRefusal(const Database& database, const CompanyRequest& request) {
  if (!FindReportKind(request.reportType) || request.accountTypeFilter.empty() ||
      request.columns != "Month") {
    return ReportRefusal{unsupportedMessage, "This request is not supported."};
  }
  if (request.basis == "Cash") {
    return ReportRefusal{
        unsupportedMessage,
        "This request is not supported: a company file has reports on the accrual basis only. "
        "Ask for ReportBasis Accrual."};
  }
  if (!FilteredAccountType(request.accountTypeFilter)) {
    return ReportRefusal{invalidFieldValue,
                         fmt::format(R"(The "AccountTypeFilter" field has an invalid value "{}".)",
                                     request.accountTypeFilter)};
  }
  if (!request.fromDate.empty() && !request.toDate.empty() && request.fromDate > request.toDate) {
    return ReportRefusal{invalidDateRange, "Invalid date range: From date is greater than To date."};
  }
  if (FindReportKind(request.reportType) != ReportKind::ProfitAndLoss) return std::nullopt;
  const std::optional<LedgerDays> days = DaysAsked(database, request);
  if (days && CountMonths(days->first, days->last) > mostMonths) {
    return ReportRefusal{invalidDateRange,
                         fmt::format("Invalid date range: a report shows at most {} months.", mostMonths)};
  }
  return std::nullopt;
}

SummaryReport ComputeReport(const Database& database, const CompanyRequest& request) {
  const bool isBalanceSheet = FindReportKind(request.reportType) == ReportKind::BalanceSheet;
  const ReportPeriod period = isBalanceSheet ? DayAsked(request) : MonthsAsked(database, request);
  SummaryReport report{isBalanceSheet ? "Balance Sheet" : "Profit & Loss", period.subtitle, {}, {}};
  for (const ReportColumn& column : period.columns) report.columnTitles.push_back(column.title);
  const bool hasTotals = period.columns.size() > 1;
  if (hasTotals) report.columnTitles.emplace_back("TOTAL");

  const ReportLayout* const layout =
      FindReportLayout(isBalanceSheet ? ReportKind::BalanceSheet : ReportKind::ProfitAndLoss,
                       FilteredAccountType(request.accountTypeFilter).value_or(""));
  if (layout == nullptr) return report;
  const ReportAccounts list = ReadReportAccounts(database, layout->accountType);
  OwnAmounts amounts = isBalanceSheet ? BalancesAsOf(database, *layout, list, request.toDate)
                                      : AmountsByMonth(database, *layout, list, period);
  if (hasTotals) AddTotals(amounts);
  report.rows = BuildReportRows(*layout, list, amounts, report.columnTitles.size());
  return report;
}

}  // namespace krnqb::company
