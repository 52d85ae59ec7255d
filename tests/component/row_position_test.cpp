#include <gtest/gtest.h>

#include "fakes/test_host.h"

// The position of new rows: above the closing rows, of which expenses have two, sales and costs one.

namespace krnqb {
namespace {

using fakes::Account;
using fakes::AccountAnswer;
using fakes::TableId;
using fakes::TableText;
using fakes::TestHost;
using fakes::TextOf;

struct PositionCase {
  std::string rows;   // a letter for each existing row
  std::string added;  // a letter for each new account
  std::string result;
};

std::string BlockOf(const std::string& id, const std::string& letters) {
  std::string rows;
  for (const char letter : letters) rows += fakes::Row({std::string_view(&letter, 1)});
  return fakes::Block(id, {rows});
}

std::string AnswerOf(const std::string& requestId, const std::string& letters) {
  std::string accounts;
  for (const char letter : letters) accounts += Account("1", std::string_view(&letter, 1));
  return AccountAnswer(requestId, {accounts});
}

void ExpectRows(const std::string& requestId, const std::string& table, const std::string& block,
                const PositionCase& each) {
  TestHost host;
  const std::string id = TableId("20", table);
  host.planContent->tables[id] = TableText(id, fakes::TableBlocks({BlockOf(block, each.rows)}));
  const std::string document =
      TextOf(host.component.KRNDeserialize(Variant(AnswerOf(requestId, each.added))));
  EXPECT_TRUE(fakes::Holds(document, BlockOf(block, each.result)))
      << each.added << " added to " << each.rows << " is not " << each.result << ": " << document;
}

TEST(NewRows, OfExpensesAreAboveTheLastTwoRowsInAccountOrder) {
  const PositionCase cases[] = {{"ABCDE", "xy", "ABCxyDE"}, {"ABC", "x", "AxBC"}, {"ABC", "xyz", "AxyzBC"},
                                {"AB", "x", "ABx"},         {"AB", "xy", "AyBx"}, {"A", "x", "Ax"},
                                {"A", "xy", "Axy"},         {"A", "xyz", "Azxy"}, {"A", "xyzw", "Azwxy"}};
  for (const PositionCase& each : cases) ExpectRows("4", "0600", "db_income_range_cat3", each);
}

TEST(NewRows, OfSalesAreAboveTheLastRow) {
  const PositionCase cases[] = {{"ABCDE", "xy", "ABCDxyE"},
                                {"AB", "xy", "AxyB"},
                                {"A", "x", "Ax"},
                                {"A", "xy", "Ayx"},
                                {"A", "xyz", "Ayzx"}};
  for (const PositionCase& each : cases) ExpectRows("1", "0400", "db_sales_values_sales", each);
}

TEST(NewRows, OfCostsAreAboveTheLastRow) {
  const PositionCase cases[] = {{"ABCDE", "xy", "ABCDxyE"}, {"AB", "x", "AxB"}};
  for (const PositionCase& each : cases) ExpectRows("2", "0400", "db_sales_values_costs", each);
}

TEST(NewRows, CountElementsAndIgnoreTheTextBetween) {
  TestHost host;
  const std::string id = TableId("20", "0600");
  host.planContent->tables[id] = TableText(
      id,
      "<tableblocks>\n <!-- costs -->\n <block id=\"db_income_range_cat3\">\n  <!-- wages -->\n  <row> "
      "<c>A</c> "
      "<!-- n --> <c>1</c> </row>\n  <?page?>\n  <row> <c>B</c> </row>\n  <!-- end -->\n  <row> <c>C</c> "
      "</row>\n </block>\n</tableblocks>");
  const std::string document = TextOf(host.component.KRNDeserialize(Variant(AnswerOf("4", "x"))));
  const XmlElement block = XmlElement::Parse(document).Select("//block[@id=\"db_income_range_cat3\"]");
  std::string names;
  for (const XmlElement& row : block.Children()) names += row.FirstChild().Text();
  EXPECT_EQ(names, "AxBC");
  EXPECT_EQ(block.FirstChild().NextSibling().LastChild().Text(), "0");
  EXPECT_TRUE(fakes::Holds(document, "<!-- costs -->"));
  EXPECT_TRUE(fakes::Holds(document, "<!-- end -->"));
}

}  // namespace
}  // namespace krnqb
