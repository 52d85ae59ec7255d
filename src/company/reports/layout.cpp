#include "company/reports/layout.h"

#include <algorithm>

#include "company/records/kinds.h"

namespace krnqb::company {
namespace {

using enum ReportKind;
using enum NormalSide;

constexpr std::string_view ordinary = "Ordinary Income/Expense";
constexpr std::string_view other = "Other Income/Expense";
constexpr std::string_view assets = "ASSETS";
constexpr std::string_view claims = "LIABILITIES & EQUITY";

constexpr ClosingRow netIncome = {"Net Income"};
constexpr ClosingRow netLoss = {"Net Income", -1};
constexpr ClosingRow totalAssets = {"TOTAL ASSETS"};
constexpr ClosingRow totalClaims = {"TOTAL LIABILITIES & EQUITY"};
constexpr ClosingRow currentAssets = {"Total Current Assets"};
constexpr ClosingRow currentLiabilities = {"Total Current Liabilities"};
constexpr ClosingRow liabilities = {"Total Liabilities"};

constexpr std::array layouts = {
    ReportLayout{"Income",
                 ProfitAndLoss,
                 Credit,
                 {ordinary, "Income"},
                 {{{"Total Income"}, {"Net Ordinary Income"}, netIncome}}},
    ReportLayout{"CostOfGoodsSold",
                 ProfitAndLoss,
                 Debit,
                 {ordinary, "Cost of Goods Sold"},
                 {{{"Total COGS"}, {"Gross Profit", -1}, {"Net Ordinary Income", -1}, netLoss}}},
    ReportLayout{"Expense",
                 ProfitAndLoss,
                 Debit,
                 {ordinary, "Expense"},
                 {{{"Total Expense"}, {"Net Ordinary Income", -1}, netLoss}}},
    ReportLayout{"OtherIncome",
                 ProfitAndLoss,
                 Credit,
                 {other, "Other Income"},
                 {{{"Total Other Income"}, {"Net Other Income"}, netIncome}}},
    ReportLayout{"OtherExpense",
                 ProfitAndLoss,
                 Debit,
                 {other, "Other Expense"},
                 {{{"Total Other Expense"}, {"Net Other Income", -1}, netLoss}}},
    ReportLayout{"Bank",
                 BalanceSheet,
                 Debit,
                 {assets, "Current Assets", "Checking/Savings"},
                 {{{"Total Checking/Savings"}, currentAssets, totalAssets}}},
    ReportLayout{"AccountsReceivable",
                 BalanceSheet,
                 Debit,
                 {assets, "Current Assets", "Accounts Receivable"},
                 {{{"Total Accounts Receivable"}, currentAssets, totalAssets}}},
    ReportLayout{"OtherCurrentAsset",
                 BalanceSheet,
                 Debit,
                 {assets, "Current Assets", "Other Current Assets"},
                 {{{"Total Other Current Assets"}, currentAssets, totalAssets}}},
    ReportLayout{
        "FixedAsset", BalanceSheet, Debit, {assets, "Fixed Assets"}, {{{"Total Fixed Assets"}, totalAssets}}},
    ReportLayout{
        "OtherAsset", BalanceSheet, Debit, {assets, "Other Assets"}, {{{"Total Other Assets"}, totalAssets}}},
    ReportLayout{"AccountsPayable",
                 BalanceSheet,
                 Credit,
                 {claims, "Liabilities", "Current Liabilities", "Accounts Payable"},
                 {{{"Total Accounts Payable"}, currentLiabilities, liabilities, totalClaims}}},
    ReportLayout{"CreditCard",
                 BalanceSheet,
                 Credit,
                 {claims, "Liabilities", "Current Liabilities", "Credit Cards"},
                 {{{"Total Credit Cards"}, currentLiabilities, liabilities, totalClaims}}},
    ReportLayout{"OtherCurrentLiability",
                 BalanceSheet,
                 Credit,
                 {claims, "Liabilities", "Current Liabilities", "Other Current Liabilities"},
                 {{{"Total Other Current Liabilities"}, currentLiabilities, liabilities, totalClaims}}},
    ReportLayout{"LongTermLiability",
                 BalanceSheet,
                 Credit,
                 {claims, "Liabilities", "Long Term Liabilities"},
                 {{{"Total Long Term Liabilities"}, liabilities, totalClaims}}},
    ReportLayout{"Equity", BalanceSheet, Credit, {claims, "Equity"}, {{{"Total Equity"}, totalClaims}}},
};

}  // namespace

std::optional<ReportKind> FindReportKind(std::string_view reportType) noexcept {
  if (reportType == "ProfitAndLossStandard") return ProfitAndLoss;
  if (reportType == "BalanceSheetStandard") return BalanceSheet;
  return std::nullopt;
}

std::optional<std::string_view> FilteredAccountType(std::string_view filter) noexcept {
  if (filter == "OrdinaryIncome") return "Income";
  if (filter == "OrdinaryExpense") return "Expense";
  if (filter == "CostOfSales") return "CostOfGoodsSold";
  if (AccountTypeOrder(filter)) return filter;
  return std::nullopt;
}

const ReportLayout* FindReportLayout(ReportKind report, std::string_view accountType) noexcept {
  const auto* const found = std::ranges::find_if(layouts, [&](const ReportLayout& layout) {
    return layout.report == report && layout.accountType == accountType;
  });
  return found == layouts.end() ? nullptr : &*found;
}

}  // namespace krnqb::company
