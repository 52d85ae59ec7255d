#include <gtest/gtest.h>

#include <map>
#include <set>
#include <sstream>

#include "cli/workplace.h"

namespace krnqb::cli {
namespace {

using tests::ProgramRun;
using tests::RunProgram;
using tests::Workplace;
using Names = std::set<std::string>;

// The names in each block's first column, by table and block.
using RowNames = std::map<std::string, std::vector<std::string>>;

RowNames RowNamesOf(const std::string& plan) {
  RowNames names;
  std::istringstream cells(RunProgram({"plan", "show", plan, "--cells"}).out);
  for (std::string line; std::getline(cells, line);) {
    std::istringstream fields(line);
    std::string table, block, row, column, text;
    std::getline(fields, table, '\t');
    std::getline(fields, block, '\t');
    std::getline(fields, row, '\t');
    std::getline(fields, column, '\t');
    std::getline(fields, text);
    if (column == "0") names[table.substr(0, 2) + table.substr(28) + " " + block].push_back(text);
  }
  return names;
}

// Returns the names in `after` that are not in `before`.
Names NewNames(const std::vector<std::string>& before, const std::vector<std::string>& after) {
  Names names(after.begin(), after.end());
  for (const std::string& name : before) names.erase(name);
  return names;
}

const Names nurseryIncome{"Caf\\u00e9 Sales", "Garden Supplies", "Landscaping", "Plant Sales",
                          "Sales Discounts"};
const Names nurseryExpenses{
    "Advertising",     "Automobile",       "Insurance", "Job Expenses", "Meals & Entertainment",
    "Office Supplies", "Payroll Expenses", "Rent",      "Utilities"};

// Expects one row for every income account in the sales block, and as many new rows in each twin block.
void ExpectSalesRows(const RowNames& before, const RowNames& after) {
  const std::string sales = "200400 db_sales_values_sales";
  const std::vector<std::string>& rows = after.at(sales);
  for (const std::string& name : nurseryIncome)
    EXPECT_EQ(std::count(rows.begin(), rows.end(), name), 1) << name;
  const std::size_t added = rows.size() - before.at(sales).size();
  EXPECT_GT(added, 0U);
  int twins = 0;
  for (const char* twin : {"210400 db_sales_values_sales_actual", "200400 db_sales_values_annual_growth",
                           "200400 db_sales_values_sales_annual_growth"}) {
    if (!before.contains(twin)) continue;
    ++twins;
    EXPECT_EQ(after.at(twin).size(), before.at(twin).size() + added) << twin;
  }
  EXPECT_GT(twins, 0);
}

class IncomeRangeProducts : public testing::TestWithParam<std::string> {};

TEST_P(IncomeRangeProducts, GetARowForEveryTopLevelAccount) {
  const Workplace place;
  place.Nursery();
  const std::string plan = place / GetParam();
  const RowNames before = RowNamesOf(plan);
  const ProgramRun run = RunProgram(place.ImportArguments(GetParam(), {"--expenses", "--income"}));
  ASSERT_EQ(run.code, 0) << run.err;
  const RowNames after = RowNamesOf(plan);
  ExpectSalesRows(before, after);
  const std::string expenses = "200600 db_income_range_cat3";
  const std::vector<std::string>& rows = after.at(expenses);
  for (const std::string& name : nurseryExpenses)
    EXPECT_EQ(std::count(rows.begin(), rows.end(), name), 1) << name;
  // The plan already has a row of that name.
  EXPECT_FALSE(NewNames(before.at(expenses), rows).contains("Depreciation"));
  const std::string actual = "210600 db_income_range_cat3_actual";
  EXPECT_EQ(after.at(actual).size() - before.at(actual).size(), rows.size() - before.at(expenses).size());
}

INSTANTIATE_TEST_SUITE_P(Samples, IncomeRangeProducts, testing::Values("ald.kpf", "cor.kpf"));

TEST(ContributionMarginProduct, GetsARowForEverySelectedAccount) {
  const Workplace place;
  place.Nursery();
  const std::string plan = place / "bri.kpf";
  const RowNames before = RowNamesOf(plan);
  const ProgramRun run =
      RunProgram(place.ImportArguments("bri.kpf", {"--expenses", "--income", "--select-expense", "Insurance",
                                                   "--select-expense", "advertising"}));
  ASSERT_EQ(run.code, 0) << run.err;
  const RowNames after = RowNamesOf(plan);
  ExpectSalesRows(before, after);
  const std::string expenses = "202000 db_contributionmargin_cat2";
  // The plan has a row RENT: it selects the account Rent, but row names are case-sensitive, so Rent is added.
  EXPECT_EQ(NewNames(before.at(expenses), after.at(expenses)), (Names{"Advertising", "Insurance", "Rent"}));
  const std::string actual = "212000 db_contributionmargin_cat2_actual";
  EXPECT_EQ(after.at(actual).size(), before.at(actual).size() + 3);
}

class AllProducts : public testing::TestWithParam<std::string> {};

TEST_P(AllProducts, GetNoRowsFromASecondImport) {
  const Workplace place;
  place.Nursery();
  const auto arguments = place.ImportArguments(GetParam(), {"--expenses", "--income", "--quiet"});
  ASSERT_EQ(RunProgram(arguments).code, 0);
  const std::string once = tests::ReadText(place / GetParam());
  ASSERT_EQ(RunProgram(arguments).code, 0);
  EXPECT_EQ(tests::ReadText(place / GetParam()), once);
}

TEST_P(AllProducts, GetTheSameRowsFromACompanyThatAnswersWithReports) {
  const Workplace transactions;
  const Workplace reports;
  transactions.Nursery("1.1");
  reports.Nursery("2.0");
  for (const Workplace* place : {&transactions, &reports}) {
    ASSERT_EQ(RunProgram(place->ImportArguments(GetParam(), {"--expenses", "--income", "--quiet"})).code, 0);
  }
  EXPECT_EQ(tests::ReadText(transactions / GetParam()), tests::ReadText(reports / GetParam()));
}

TEST_P(AllProducts, ImportIncomeAccountsAlone) {
  const Workplace place;
  place.Nursery();
  const RowNames before = RowNamesOf(place / GetParam());
  ASSERT_EQ(RunProgram(place.ImportArguments(GetParam(), {"--income"})).code, 0);
  const RowNames after = RowNamesOf(place / GetParam());
  ExpectSalesRows(before, after);
  for (const auto& [block, rows] : before) {
    if (block.find("_sales_") != std::string::npos) continue;
    EXPECT_EQ(after.at(block), rows) << block;
  }
}

INSTANTIATE_TEST_SUITE_P(Samples, AllProducts, testing::Values("ald.kpf", "bri.kpf", "cor.kpf"));

// The monthly passes go over both account lists; a list that was not requested is not an omission.
TEST(ImportOfOneAccountKind, IsCompleteWithAmounts) {
  for (const std::string version : {"1.1", "2.0"}) {
    for (const std::string kind : {"--income", "--expenses"}) {
      const Workplace place;
      place.NurseryYear(version);
      const tests::ProgramRun run =
          RunProgram(place.ImportArguments("ald.kpf", {kind, "--balances", "all", "--quiet"}));
      EXPECT_EQ(run.code, 0) << version << ' ' << kind << ": " << run.err;
      EXPECT_EQ(run.err.find("incomplete"), std::string::npos) << run.err;
    }
  }
}

}  // namespace
}  // namespace krnqb::cli
