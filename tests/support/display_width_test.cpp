#include "support/display_width.h"

#include <gtest/gtest.h>

namespace krnqb {
namespace {

TEST(DisplayWidth, CountsTheColumnsOfATerminal) {
  EXPECT_EQ(DisplayWidth(""), 0U);
  EXPECT_EQ(DisplayWidth("Rent"), 4U);
  EXPECT_EQ(DisplayWidth("Café"), 4U);
  EXPECT_EQ(DisplayWidth("Cafe\u0301"), 4U);
  EXPECT_EQ(DisplayWidth("売上"), 4U);
  EXPECT_EQ(DisplayWidth("\U0001F331"), 2U);
  EXPECT_EQ(DisplayWidth("\xFF"), 1U);
}

TEST(ShortenedToWidth, KeepsWhatFits) {
  EXPECT_EQ(ShortenedToWidth("Rent", 4), "Rent");
  EXPECT_EQ(ShortenedToWidth("Café", 4), "Café");
  EXPECT_EQ(ShortenedToWidth("", 0), "");
}

TEST(ShortenedToWidth, EndsWithAnEllipsisInsideTheWidth) {
  EXPECT_EQ(ShortenedToWidth("Insurance", 4), "Ins…");
  EXPECT_EQ(ShortenedToWidth("Insurance", 1), "…");
  EXPECT_EQ(ShortenedToWidth("Insurance", 0), "");
  EXPECT_EQ(ShortenedToWidth("売上原価", 5), "売上…");
  EXPECT_EQ(ShortenedToWidth("売上原価", 4), "売…");
}

}  // namespace
}  // namespace krnqb
