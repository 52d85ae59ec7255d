#include "plan_file/layout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>

#include "plan_file/content.h"
#include "plan_file/file.h"
#include "plan_file/fixture.h"
#include "support/number_text.h"

namespace krnqb::plan_file {
namespace {

namespace fs = std::filesystem;

class NewPlan : public testing::TestWithParam<QBKRNproduct> {
 protected:
  NewPlan() { PlanFile::Create(folder / "new.kpf", GetParam(), {2003, 7}); }

  PlanContent Content() { return ReadPlanContent(*PlanFile::Open(folder / "new.kpf")); }
  static bool IsPlanned(const PlanTableContent& table) {
    return table.id.starts_with("20") && !table.id.ends_with("0800");
  }

  TemporaryFolder folder;
};

TEST_P(NewPlan, HasItsProductAndStart) {
  const auto plan = PlanFile::Open(folder / "new.kpf");
  EXPECT_EQ(plan->Product(), GetParam());
  EXPECT_EQ(plan->Start(), (YearMonth{2003, 7}));
}

TEST_P(NewPlan, HasRowsOfItsTablesWidth) {
  for (const PlanTableContent& table : Content()) {
    const std::size_t past = GetParam() == QBKRN_COR ? 15 : 4;
    const std::size_t cells = IsPlanned(table) ? 14 : table.id.starts_with("21") ? 13 : past;
    for (const PlanBlock& block : table.blocks) {
      for (const PlanRow& row : block.rows) EXPECT_EQ(row.size(), cells) << block.id << " " << row[0];
    }
  }
}

TEST_P(NewPlan, HasNumbersAboveARowOfTotals) {
  for (const PlanTableContent& table : Content()) {
    for (const PlanBlock& block : table.blocks) {
      ASSERT_GE(block.rows.size(), 2U);
      for (std::size_t row = 0; row + 1 < block.rows.size(); ++row) {
        EXPECT_FALSE(ConvertToDouble(block.rows[row][0])) << block.id;
        for (std::size_t cell = 1; cell < block.rows[row].size(); ++cell)
          EXPECT_EQ(block.rows[row][cell], "0");
      }
      const PlanRow& totals = block.rows.back();
      for (std::size_t cell = IsPlanned(table) ? 2 : 1; cell < totals.size(); ++cell) {
        EXPECT_TRUE(IsFormula(totals[cell])) << block.id;
      }
      if (IsPlanned(table)) {
        EXPECT_EQ(totals[1], "*null*");
      }
    }
  }
}

TEST_P(NewPlan, HasConsecutiveBlocks) {
  for (const PlanTableContent& table : Content()) {
    double next = 1;
    for (const PlanBlock& block : table.blocks) {
      const double start = ConvertToDouble(block.startRow).value_or(0);
      EXPECT_GE(start, next) << block.id;
      next = start + static_cast<double>(block.rows.size());
    }
  }
}

TEST_P(NewPlan, HasTheSameRowsInPlannedAndActualBlocks) {
  std::map<std::string, std::vector<std::string>> names;
  for (const PlanTableContent& table : Content()) {
    for (const PlanBlock& block : table.blocks) {
      for (const PlanRow& row : block.rows) names[block.id].push_back(row[0]);
    }
  }
  for (const auto& [planned, twins] : std::map<std::string, std::vector<std::string>>{
           {"db_sales_values_sales",
            {"db_sales_values_sales_actual", "db_sales_values_annual_growth",
             "db_sales_values_sales_annual_growth"}},
           {"db_sales_values_costs", {"db_sales_values_costs_actual", "db_sales_values_costs_annual_growth"}},
           {"db_income_range_cat3", {"db_income_range_cat3_actual"}},
           {"db_contributionmargin_cat2", {"db_contributionmargin_cat2_actual"}}}) {
    for (const std::string& twin : twins) EXPECT_EQ(names[planned], names[twin]) << twin;
  }
}

TEST_P(NewPlan, IsUnchangedByItsFirstSave) {
  const std::string written = ReadText(folder / "new.kpf");
  PlanFile::Open(folder / "new.kpf")->Save();
  EXPECT_EQ(ReadText(folder / "new.kpf"), written);
}

INSTANTIATE_TEST_SUITE_P(PlanLayout, NewPlan, testing::Values(QBKRN_ALD, QBKRN_BRI, QBKRN_COR),
                         [](const testing::TestParamInfo<QBKRNproduct>& test) {
                           return std::string(ProductText(test.param));
                         });

std::string Outline(QBKRNproduct product) {
  const TemporaryFolder folder;
  PlanFile::Create(folder / "new.kpf", product, {2003, 1});
  std::string outline;
  for (const PlanTableContent& table : ReadPlanContent(*PlanFile::Open(folder / "new.kpf"))) {
    outline += table.id.substr(0, 2) + "/" + table.id.substr(28) + "\n";
    for (const PlanBlock& block : table.blocks) {
      outline += " " + block.id + " at " + block.startRow + ":";
      for (const PlanRow& row : block.rows) outline += " " + row[0] + ",";
      outline += " " + block.rows.back().back() + "\n";
    }
  }
  return outline;
}

constexpr const char* salesOutline = R"(20/0400
 db_sales_values_sales at 5: Example product, Total sales, =SUM(N5:N5)
 db_sales_values_annual_growth at 9: Example product, Total sales, =AVERAGE(N9:N9)
 db_sales_values_sales_annual_growth at 13: Example product, Total sales, =AVERAGE(N13:N13)
 db_sales_values_costs at 17: Example cost of sales, Total cost of sales, =SUM(N17:N17)
 db_sales_values_costs_annual_growth at 21: Example cost of sales, Total cost of sales, =AVERAGE(N21:N21)
21/0400
 db_sales_values_sales_actual at 5: Example product, Total sales, =SUM(M5:M5)
 db_sales_values_costs_actual at 9: Example cost of sales, Total cost of sales, =SUM(M9:M9)
)";

constexpr const char* expenseOutline = R"(20/0600
 db_income_range_cat3 at 5: Example expense, Depreciation, Total expenses, =SUM(N5:N6)
21/0600
 db_income_range_cat3_actual at 5: Example expense, Depreciation, Total expenses, =SUM(M5:M6)
)";

std::string PastOutline(const std::string& column) {
  const std::string text = R"(20/0800
 db_pastperformance_sales at 5: Sales, Gross margin, Other income, Operating expenses, Operating result, =#6+#7-#8
 db_pastperformance_shorttermassets at 12: Cash, Accounts receivable, Inventory, Other short-term assets, Total short-term assets, =SUM(#12:#15)
 db_pastperformance_longtermassets at 19: Fixed assets, Accumulated depreciation, Total long-term assets, =SUM(#19:#20)
 db_pastperformance_liabilities at 24: Accounts payable, Credit cards, Other current liabilities, Total current liabilities, =SUM(#24:#26)
 db_pastperformance_longtermliabilities at 30: Loans, Total long-term liabilities, =SUM(#30:#30)
 db_pastperformance_capital at 34: Equity, Retained earnings, Total capital, =SUM(#34:#35)
)";
  std::string outline;
  for (const char character : text) outline += character == '#' ? column : std::string(1, character);
  return outline;
}

TEST(PlanLayout, OfAldHasSalesCostsExpensesAndThreePastYears) {
  EXPECT_EQ(Outline(QBKRN_ALD), std::string(salesOutline) + expenseOutline + PastOutline("D"));
}

TEST(PlanLayout, OfCorHasTwoPastYearsAndTwelvePastMonths) {
  EXPECT_EQ(Outline(QBKRN_COR), std::string(salesOutline) + expenseOutline + PastOutline("O"));
}

TEST(PlanLayout, OfBriHasContributionMarginsInsteadOfExpensesAndPast) {
  EXPECT_EQ(Outline(QBKRN_BRI), std::string(salesOutline) + R"(20/2000
 db_contributionmargin_cat2 at 5: Example expense, Other expenses, Total expenses, =SUM(N5:N6)
21/2000
 db_contributionmargin_cat2_actual at 5: Example expense, Other expenses, Total expenses, =SUM(M5:M6)
20/2090
 db_contributionmargin_result at 5: Sales, Cost of sales, Contribution margin, =N5-N6
)");
}

TEST(PlanCreate, RefusesToOverwriteAFileOrALink) {
  const TemporaryFolder folder;
  WriteText(folder / "old.kpf", "old");
  fs::create_symlink("nowhere", folder / "link.kpf");
  for (const char* name : {"old.kpf", "link.kpf"}) {
    const fs::path file = folder / name;
    const auto error = ErrorOf([&] { PlanFile::Create(file, QBKRN_ALD, {2003, 1}); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Description(), "cannot create " + file.string() +
                                        ": a file of that name already exists and is not overwritten; choose "
                                        "another name or move that file away");
  }
  EXPECT_EQ(ReadText(folder / "old.kpf"), "old");
  EXPECT_TRUE(fs::is_symlink(folder / "link.kpf"));
  EXPECT_EQ(std::distance(fs::directory_iterator(folder.Path()), fs::directory_iterator()), 2);
}

TEST(PlanCreate, RefusesAnUnknownProductAndAnInvalidStart) {
  const TemporaryFolder folder;
  for (const auto& [product, start] :
       {std::pair{static_cast<QBKRNproduct>(4), YearMonth{2003, 1}}, std::pair{QBKRN_ALD, YearMonth{2003, 0}},
        std::pair{QBKRN_ALD, YearMonth{2003, 13}}, std::pair{QBKRN_ALD, YearMonth{12, 1}}}) {
    const auto error = ErrorOf([&] { PlanFile::Create(folder / "new.kpf", product, start); });
    ASSERT_TRUE(error);
    EXPECT_EQ(error->Number(), error_number::invalidProcedureCall);
  }
  EXPECT_TRUE(fs::is_empty(folder.Path()));
}

TEST(PlanCreate, InAMissingFolderNamesTheStepAndTheFile) {
  const TemporaryFolder folder;
  const fs::path file = folder.Path() / "none" / "new.kpf";
  const auto error = ErrorOf([&] { PlanFile::Create(file, QBKRN_ALD, {2003, 1}); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Description(),
            "cannot create " + file.string() + ": creating " + file.string() +
                ".tmp failed: No such file or directory; there is no new file, check the path");
}

}  // namespace
}  // namespace krnqb::plan_file
