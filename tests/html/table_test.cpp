#include "html/table.h"

#include <gtest/gtest.h>

namespace krnqb::html {
namespace {

TEST(TableRegion, NamesRowsAndColumnsForScreenReadersAndScrollsByKeyboard) {
  const Table table{
      .caption = "Sales & costs",
      .columns = {{"Account", Alignment::Text}, {"Jan"}, {"Note", Alignment::Text}},
      .rows = {{.heading = {Text("Rent")},
                .cells = {{Text("1,000.50"), "1000.5"}, {Text("paid")}},
                .name = "rent"},
               {.heading = {Text("Sum")}, .cells = {{Text("1,000.50")}}, .kind = RowKind::Total}},
      .name = "costs"};
  EXPECT_EQ(TableRegion(table).Markup(),
            "<div class=\"scroll\" role=\"region\" aria-label=\"Sales &amp; costs\" tabindex=\"0\">"
            "<table data-table=\"costs\"><caption>Sales &amp; costs</caption>"
            "<thead><tr><th scope=\"col\">Account</th><th scope=\"col\" class=\"n\">Jan</th>"
            "<th scope=\"col\">Note</th></tr></thead>"
            "<tbody><tr data-row=\"rent\"><th scope=\"row\">Rent</th>"
            "<td class=\"n\" data-value=\"1000.5\">1,000.50</td><td>paid</td></tr>"
            "<tr class=\"total\"><th scope=\"row\">Sum</th><td class=\"n\">1,000.50</td><td></td></tr>"
            "</tbody></table></div>");
}

TEST(TableRegion, StartsABodyAtEachHeading) {
  Table table{.caption = "T", .columns = {{"A", Alignment::Text}, {"B"}}, .rows = {}};
  table.rows = {{.heading = {Text("One")}, .cells = {}, .kind = RowKind::Heading},
                {.heading = {Text("a")}, .cells = {{Text("1")}}},
                {.heading = {Text("Two")}, .cells = {}, .kind = RowKind::Heading}};
  EXPECT_NE(TableRegion(table).Markup().find(
                "<tbody><tr class=\"group\"><th scope=\"rowgroup\" colspan=\"2\">One</th></tr><tr>"
                "<th scope=\"row\">a</th><td class=\"n\">1</td></tr></tbody><tbody><tr class=\"group\">"
                "<th scope=\"rowgroup\" colspan=\"2\">Two</th></tr></tbody>"),
            std::string::npos);
}

TEST(TableRegion, PrintsManyColumnsInSmallerLetters) {
  Table table{
      .caption = "T", .columns = {{"A", Alignment::Text}}, .rows = {{.heading = {Text("a")}, .cells = {}}}};
  table.columns.resize(10, {"B"});
  EXPECT_EQ(TableRegion(table).Markup().find("class=\"wide\""), std::string::npos);
  table.columns.resize(11, {"B"});
  EXPECT_NE(TableRegion(table).Markup().find("<table class=\"wide\">"), std::string::npos);
}

TEST(TableRegion, IsNothingWithoutRows) {
  EXPECT_TRUE(TableRegion({.caption = "T", .columns = {{"A"}}, .rows = {}}).Empty());
}

}  // namespace
}  // namespace krnqb::html
