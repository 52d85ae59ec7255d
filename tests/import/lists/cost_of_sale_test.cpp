#include "import/lists/cost_of_sale.h"

#include <gtest/gtest.h>

#include <string>

#include "thrown_error.h"

namespace krnqb {
namespace {

TEST(CostOfGoodsMarker, ContainsThePartsUnescaped) {
  EXPECT_EQ(CostOfGoodsMarker({"C-1", "I-1", "2.50"}),
            "<COGS  cogsid=\"C-1\" workid=\"I-1\" averagecost=\"2.50\"/>");
  EXPECT_EQ(CostOfGoodsMarker({"C&1", "I\"1", "<2"}),
            "<COGS  cogsid=\"C&1\" workid=\"I\"1\" averagecost=\"<2\"/>");
}

TEST(CostOfGoodsMarker, IsRecognizedByItsFirstFiveCharacters) {
  EXPECT_TRUE(IsCostOfGoodsMarker("<COGS  cogsid=\"\" workid=\"\" averagecost=\"\"/>"));
  EXPECT_TRUE(IsCostOfGoodsMarker("<COGS"));
  EXPECT_FALSE(IsCostOfGoodsMarker("<COG"));
  EXPECT_FALSE(IsCostOfGoodsMarker("<cogs  "));
  EXPECT_FALSE(IsCostOfGoodsMarker(" <COGS"));
  EXPECT_FALSE(IsCostOfGoodsMarker("I-1"));
  EXPECT_FALSE(IsCostOfGoodsMarker(""));
}

TEST(CostOfGoodsMarker, ReadsBackUnchanged) {
  const CostOfSale sale{"C-1", "I 1'>", " 2,50 \u00b7 "};
  EXPECT_EQ(ReadCostOfGoodsMarker(CostOfGoodsMarker(sale)), sale);
}

TEST(CostOfGoodsMarker, ReadsAMissingAttributeAsTheEmptyText) {
  EXPECT_EQ(ReadCostOfGoodsMarker("<COGS averagecost=\"2\"/>"), (CostOfSale{"", "", "2"}));
  EXPECT_EQ(ReadCostOfGoodsMarker("<COGSX>C-1</COGSX>"), CostOfSale());
}

TEST(CostOfGoodsMarker, FailsIfItIsMalformed) {
  for (const std::string& marker :
       {CostOfGoodsMarker({"C-1", "I-1", "<2"}), CostOfGoodsMarker({"C&1", "I-1", "2"}),
        CostOfGoodsMarker({"C-1", "I\"1", "2"}), std::string("<COGS")}) {
    EXPECT_EQ(tests::NumberThrownBy([&] { ReadCostOfGoodsMarker(marker); }), error_number::objectNotSet)
        << marker;
  }
}

TEST(PostingOf, IsTheCostOfSaleIfTheMarkerReadsBackUnchanged) {
  for (const CostOfSale& sale :
       {CostOfSale{"C-1", "I-1", "2.5"}, CostOfSale{"", "", ""}, CostOfSale{"C'1", "I>1", "\u00e4 2,5 "}}) {
    EXPECT_EQ(PostingOf(sale), SalePosting(sale)) << CostOfGoodsMarker(sale);
  }
}

TEST(PostingOf, IsTheMarkerIfAPartHasACharacterThatDoesNotReadBack) {
  for (const char* text : {"a\"b", "a&b", "a<b", "a\tb", "a\rb", "a\nb"}) {
    for (const CostOfSale& sale :
         {CostOfSale{text, "I-1", "2.5"}, CostOfSale{"C-1", text, "2.5"}, CostOfSale{"C-1", "I-1", text}}) {
      EXPECT_EQ(PostingOf(sale), SalePosting(CostOfGoodsMarker(sale))) << CostOfGoodsMarker(sale);
    }
  }
}

TEST(PostingText, IsTheAccountIdOrTheMarker) {
  EXPECT_EQ(PostingText("I-1"), "I-1");
  EXPECT_EQ(PostingText(SalePosting()), "");
  EXPECT_EQ(PostingText(CostOfSale{"C-1", "I-1", "2"}),
            "<COGS  cogsid=\"C-1\" workid=\"I-1\" averagecost=\"2\"/>");
}

}  // namespace
}  // namespace krnqb
