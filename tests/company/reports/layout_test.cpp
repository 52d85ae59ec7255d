#include "company/reports/layout.h"

#include <gtest/gtest.h>

#include <vector>

#include "company/records/kinds.h"

namespace krnqb::company {
namespace {

TEST(CompanyReportLayout, KnowsTheFiltersOfProfitAndLossAndTheAccountTypes) {
  struct Case {
    std::string_view filter;
    std::optional<std::string_view> type;
  };
  const std::vector<Case> cases = {{"OrdinaryIncome", "Income"},
                                   {"OrdinaryExpense", "Expense"},
                                   {"CostOfSales", "CostOfGoodsSold"},
                                   {"Income", "Income"},
                                   {"Bank", "Bank"},
                                   {"NonPosting", "NonPosting"},
                                   {"Equity", "Equity"},
                                   {"Depreciation", {}},
                                   {"RetainedEarnings", {}},
                                   {"bank", {}},
                                   {" Bank", {}},
                                   {"", {}}};
  for (const auto& [filter, type] : cases) {
    SCOPED_TRACE(filter);
    EXPECT_EQ(FilteredAccountType(filter), type);
  }
}

TEST(CompanyReportLayout, ShowsEachPostingTypeInOneReport) {
  const std::vector<std::string_view> types = {"Bank",
                                               "AccountsReceivable",
                                               "OtherCurrentAsset",
                                               "FixedAsset",
                                               "OtherAsset",
                                               "AccountsPayable",
                                               "CreditCard",
                                               "OtherCurrentLiability",
                                               "LongTermLiability",
                                               "Equity",
                                               "Income",
                                               "CostOfGoodsSold",
                                               "Expense",
                                               "OtherIncome",
                                               "OtherExpense"};
  for (const std::string_view type : types) {
    SCOPED_TRACE(type);
    ASSERT_TRUE(AccountTypeOrder(type).has_value());
    EXPECT_NE(FindReportLayout(ReportKind::BalanceSheet, type) != nullptr,
              FindReportLayout(ReportKind::ProfitAndLoss, type) != nullptr);
  }
  EXPECT_EQ(FindReportLayout(ReportKind::BalanceSheet, "NonPosting"), nullptr);
  EXPECT_EQ(FindReportLayout(ReportKind::ProfitAndLoss, "NonPosting"), nullptr);
}

TEST(CompanyReportLayout, HasOneHeadingForEachSumExceptTheExtraOnesOfProfitAndLoss) {
  for (const std::string_view type :
       {"Bank", "FixedAsset", "AccountsPayable", "LongTermLiability", "Equity"}) {
    SCOPED_TRACE(type);
    const ReportLayout* const layout = FindReportLayout(ReportKind::BalanceSheet, type);
    ASSERT_NE(layout, nullptr);
    for (std::size_t place = 0; place < layout->headings.size(); ++place) {
      EXPECT_EQ(layout->headings.at(place).empty(), layout->closings.at(place).label.empty());
    }
  }
}

}  // namespace
}  // namespace krnqb::company
