#include "cli/console/nearest_names.h"

#include <gtest/gtest.h>

namespace krnqb::cli {
namespace {

using Names = std::vector<std::string>;

struct Distance {
  std::string first;
  std::string second;
  std::size_t mistakes;
};

class EditDistances : public testing::TestWithParam<Distance> {};

TEST_P(EditDistances, AreSymmetric) {
  EXPECT_EQ(EditDistance(GetParam().first, GetParam().second), GetParam().mistakes);
  EXPECT_EQ(EditDistance(GetParam().second, GetParam().first), GetParam().mistakes);
}

INSTANTIATE_TEST_SUITE_P(OfNames, EditDistances,
                         testing::Values(Distance{"", "", 0}, Distance{"", "Rent", 4},
                                         Distance{"Rent", "Rent", 0}, Distance{"RENT", "rent", 0},
                                         Distance{"Rennt", "Rent", 1}, Distance{"Rant", "Rent", 1},
                                         Distance{"Retn", "Rent", 1}, Distance{"Café", "Cafe", 1},
                                         Distance{"É", "é", 0}, Distance{"kitten", "sitting", 3}));

TEST(NearestNames, ReturnsTheNearestFirst) {
  EXPECT_EQ(NearestNames("Rentt", Names{"Rents", "Rent", "Advertising"}), (Names{"Rents", "Rent"}));
  EXPECT_EQ(NearestNames("Rent", Names{"Rents", "Rent", "Advertising"}), (Names{"Rent", "Rents"}));
}

TEST(NearestNames, ReturnsThreeAtMost) {
  EXPECT_EQ(NearestNames("Name1", Names{"Name2", "Name3", "Name4", "Name5"}).size(), 3U);
}

TEST(NearestNames, FindsANameByAPartOfIt) {
  EXPECT_EQ(NearestNames("meals", Names{"Rent", "Meals & Entertainment"}), (Names{"Meals & Entertainment"}));
}

TEST(NearestNames, ReturnsNothingThatDiffersTooMuch) {
  EXPECT_EQ(NearestNames("Zoo", Names{"Rent", "Advertising"}), Names{});
  EXPECT_EQ(NearestNames("", Names{"Rent"}), Names{});
}

TEST(AlternativesText, JoinsQuotedNames) {
  EXPECT_EQ(AlternativesText(Names{}), "");
  EXPECT_EQ(AlternativesText(Names{"A"}), "\"A\"");
  EXPECT_EQ(AlternativesText(Names{"A", "B"}), "\"A\" or \"B\"");
  EXPECT_EQ(AlternativesText(Names{"A", "B", "C"}), "\"A\", \"B\" or \"C\"");
}

TEST(NearestNames, MayDifferInAThirdOfTheirCharacters) {
  EXPECT_EQ(NearestNames("Bex", Names{"Bed"}), Names{"Bed"});
  EXPECT_EQ(NearestNames("Bxx", Names{"Bed"}), Names{});
}

}  // namespace
}  // namespace krnqb::cli
