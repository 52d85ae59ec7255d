#include "plan/table_identifiers.h"

#include <gtest/gtest.h>

namespace krnqb {
namespace {

using Ids = std::vector<std::string_view>;

TEST(TablesAffected, ListsTheContributionMarginTablesForBri) {
  EXPECT_EQ(TablesAffected(QBKRN_BRI),
            (Ids{"20000000000000000000000000002090", "20000000000000000000000000002000",
                 "20000000000000000000000000000400", "21000000000000000000000000000400"}));
}

TEST(TablesAffected, ListsSalesIncomeRangeAndPastPerformanceForAldAndCor) {
  const Ids ids = {"20000000000000000000000000000400", "21000000000000000000000000000400",
                   "20000000000000000000000000000600", "21000000000000000000000000000600",
                   "20000000000000000000000000000800"};
  EXPECT_EQ(TablesAffected(QBKRN_ALD), ids);
  EXPECT_EQ(TablesAffected(QBKRN_COR), ids);
}

TEST(TablesAffected, ListsNothingForAnUnknownProduct) {
  EXPECT_TRUE(TablesAffected(QBKRNproduct{0}).empty());
  EXPECT_TRUE(TablesAffected(QBKRNproduct{4}).empty());
}

}  // namespace
}  // namespace krnqb
