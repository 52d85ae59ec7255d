#include "plan_file/attributes.h"

#include <gtest/gtest.h>

namespace krnqb::plan_file {
namespace {

TEST(PlanAttributes, EveryProductHasAText) {
  EXPECT_EQ(ProductText(QBKRN_ALD), "ald");
  EXPECT_EQ(ProductText(QBKRN_BRI), "bri");
  EXPECT_EQ(ProductText(QBKRN_COR), "cor");
  EXPECT_EQ(ProductText(static_cast<QBKRNproduct>(0)), "");
  for (const QBKRNproduct product : {QBKRN_ALD, QBKRN_BRI, QBKRN_COR}) {
    EXPECT_EQ(ProductFromText(ProductText(product)), product);
  }
}

TEST(PlanAttributes, OtherTextsAreNotProducts) {
  for (const char* text : {"", "ALD", "ald ", "1", "korrin"}) EXPECT_FALSE(ProductFromText(text)) << text;
}

TEST(PlanAttributes, AStartIsWrittenAsYearAndMonth) {
  EXPECT_EQ(PlanStartFromText("2003-01"), (YearMonth{2003, 1}));
  EXPECT_EQ(PlanStartFromText("1999-12"), (YearMonth{1999, 12}));
  for (const char* text : {"", "2003", "2003-00", "2003-13", "2003-1", "03-01", "2003/01", "2003-01-01",
                           " 2003-01", "-003-01", "2003--1", "0999-01", "20x3-01"}) {
    EXPECT_FALSE(PlanStartFromText(text)) << text;
  }
}

TEST(PlanAttributes, AStartIsFormattedAsItIsParsed) {
  EXPECT_EQ(PlanStartText({2003, 4}), "2003-04");
  EXPECT_EQ(PlanStartFromText(PlanStartText({2010, 11})), (YearMonth{2010, 11}));
}

}  // namespace
}  // namespace krnqb::plan_file
