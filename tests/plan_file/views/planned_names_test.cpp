#include "plan_file/views/planned_names.h"

#include <gtest/gtest.h>

namespace krnqb::plan_file {
namespace {

std::vector<std::string> NamesOf(const PlanBlock& block) {
  std::vector<std::string> names;
  for (const PlanRow& row : block.rows) names.push_back(row.empty() ? "(no cells)" : row.front());
  return names;
}

TEST(RowsOfAnActualBlock, AreNamedAfterThePlannedRowsAtTheirPlaces) {
  PlanContent content{
      {"21000000000000000000000000000600",
       {{"db_income_range_cat3_actual",
         "5",
         {{"Fuel"}, {"*null*"}, {""}, {"0"}, {}, {"*null*"}, {"*null*"}}}}},
      {"20000000000000000000000000000600",
       {{"db_income_range_cat3", "5", {{"Gas"}, {"Rent"}, {"Fees"}, {"Water"}, {"Tax"}, {"*null*"}}}}}};
  NameRowsAfterPlanned(content);
  EXPECT_EQ(NamesOf(content[0].blocks[0]), (std::vector<std::string>{"Fuel", "(Rent)", "(Fees)", "(Water)",
                                                                     "(no cells)", "*null*", "*null*"}));
  EXPECT_EQ(NamesOf(content[1].blocks[0]),
            (std::vector<std::string>{"Gas", "Rent", "Fees", "Water", "Tax", "*null*"}));
}

TEST(RowsOfAGrowthBlock, AreNamedAfterThePlannedRowsToo) {
  PlanContent content{{"20000000000000000000000000000400",
                       {{"db_sales_values_sales", "5", {{"Plants"}}},
                        {"db_sales_values_costs", "8", {{"Seeds"}}},
                        {"db_sales_values_annual_growth", "11", {{"*null*"}}},
                        {"db_sales_values_sales_annual_growth", "14", {{"*null*"}}},
                        {"db_sales_values_costs_annual_growth", "17", {{"*null*"}}},
                        {"db_general_assumptions", "20", {{"*null*"}}}}}};
  NameRowsAfterPlanned(content);
  const std::vector<PlanBlock>& blocks = content[0].blocks;
  EXPECT_EQ(blocks[2].rows[0][0], "(Plants)");
  EXPECT_EQ(blocks[3].rows[0][0], "(Plants)");
  EXPECT_EQ(blocks[4].rows[0][0], "(Seeds)");
  EXPECT_EQ(blocks[5].rows[0][0], "*null*");
}

TEST(RowsOfAnActualBlock, StayNamelessWithoutItsPlannedBlock) {
  PlanContent content{{"1", {{"db_sales_values_sales_actual", "5", {{"*null*"}}}}}};
  NameRowsAfterPlanned(content);
  EXPECT_EQ(content[0].blocks[0].rows[0][0], "*null*");
}

}  // namespace
}  // namespace krnqb::plan_file
