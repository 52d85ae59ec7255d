#include "html/chart.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <regex>

namespace krnqb::html {
namespace {

std::size_t CountOf(const std::string& text, std::string_view part) {
  std::size_t count = 0;
  for (std::size_t place = text.find(part); place != std::string::npos; place = text.find(part, place + 1))
    ++count;
  return count;
}

// Returns the numbers of an attribute of the elements with a class.
std::vector<double> Values(const std::string& markup, const std::string& look, const std::string& attribute) {
  std::vector<double> values;
  const std::regex element("<rect class=\"" + look + "\"[^>]*\\b" + attribute + "=\"([-0-9.]+)\"");
  for (std::sregex_iterator match(markup.begin(), markup.end(), element), end; match != end; ++match)
    values.push_back(std::stod((*match)[1]));
  return values;
}

Chart ChartOf(std::vector<std::optional<double>> amounts, SeriesKind kind = SeriesKind::Bars) {
  Chart chart{.title = "T", .description = "D", .labels = {}, .series = {}};
  for (std::size_t index = 0; index < amounts.size(); ++index)
    chart.labels.push_back("L" + std::to_string(index));
  chart.series.push_back({.name = "S", .kind = kind, .colour = 1, .amounts = std::move(amounts)});
  return chart;
}

TEST(ChartImage, IsNamedAndDescribedForScreenReaders) {
  const std::string markup = ChartImage(ChartOf({1.0})).Markup();
  EXPECT_EQ(markup.find("<div class=\"scroll\" role=\"region\" aria-label=\"Chart: T\" tabindex=\"0\">"
                        "<svg role=\"img\" viewBox=\"0 0 960 306\"><title>T</title><desc>D</desc>"),
            0U)
      << markup;
}

TEST(ChartImage, DrawsBarsInProportionFromZero) {
  const std::string markup = ChartImage(ChartOf({100.0, 50.0, -100.0})).Markup();
  // The legend's key is the first rectangle.
  const std::vector<double> heights = Values(markup, "f1", "height");
  const std::vector<double> tops = Values(markup, "f1", "y");
  ASSERT_EQ(heights.size(), 4U);
  EXPECT_NEAR(heights[1], 2 * heights[2], 0.11);
  EXPECT_NEAR(heights[1], heights[3], 0.11);
  EXPECT_NEAR(tops[1] + heights[1], tops[3], 0.11);
  EXPECT_NEAR(tops[2] + heights[2], tops[3], 0.11);
}

TEST(ChartImage, LeavesGapsForMissingAndInfiniteAmounts) {
  const double infinite = std::numeric_limits<double>::infinity();
  const std::string bars = ChartImage(ChartOf({1.0, std::nullopt, infinite, std::nan(""), 1e300})).Markup();
  EXPECT_EQ(CountOf(bars, "<rect"), 2U);
  EXPECT_EQ(bars.find("inf"), std::string::npos);
  EXPECT_EQ(bars.find("nan"), std::string::npos);
  const std::string lines = ChartImage(ChartOf({1.0, 2.0, std::nullopt, 3.0}, SeriesKind::Line)).Markup();
  EXPECT_EQ(CountOf(lines, "<polyline"), 2U);
}

TEST(ChartImage, MarksTheAxisWithRoundAmounts) {
  struct Case {
    double amount;
    std::vector<std::string> marks;
  };
  const Case cases[] = {
      {100, {">0<", ">20<", ">100<"}},
      {1234567, {">0<", ">500,000<", ">1,500,000<"}},
      {-3, {">-3<", ">-1<", ">0<"}},
      {0.3, {">0.00<", ">0.10<", ">0.30<"}},
      {0, {">0.00<"}},
  };
  for (const Case& each : cases) {
    const std::string markup = ChartImage(ChartOf({each.amount})).Markup();
    for (const std::string& mark : each.marks)
      EXPECT_NE(markup.find(mark), std::string::npos) << mark << markup;
  }
}

TEST(ChartImage, IsNothingWithoutAmounts) {
  EXPECT_TRUE(ChartImage(ChartOf({})).Empty());
  EXPECT_TRUE(ChartImage(ChartOf({std::nullopt})).Empty());
}

TEST(BarList, ShortensNamesAndShowsTheAmounts) {
  const std::string markup =
      BarList("T", "D", {{"Rent", 200.0}, {std::string(60, 'x'), 100.0}, {"Back", -50.0}}, 2).Markup();
  EXPECT_NE(markup.find(">200.00<"), std::string::npos);
  EXPECT_NE(markup.find('>' + std::string(33, 'x') + "\u2026<"), std::string::npos);
  const std::vector<double> widths = Values(markup, "f2", "width");
  const std::vector<double> lefts = Values(markup, "f2", "x");
  ASSERT_EQ(widths.size(), 3U);
  EXPECT_NEAR(widths[0], 2 * widths[1], 0.11);
  EXPECT_NEAR(lefts[2] + widths[2], lefts[0], 0.11);
}

}  // namespace
}  // namespace krnqb::html
