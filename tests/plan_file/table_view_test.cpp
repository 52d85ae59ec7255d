#include "plan_file/table_view.h"

#include <gtest/gtest.h>

#include "limited_child.h"
#include "plan_file/fixture.h"
#include "plan_file/headings.h"

namespace krnqb::plan_file {
namespace {

TEST(PlanTableView, AlignsNamesLeftAndOtherCellsRightByCharacters) {
  const PlanTableContent table{
      "20000000000000000000000000000600",
      {{"db_income_range_cat3",
        "5",
        {{"Café", "0.1", "1200"}, {"Total", "*null*", "=SUM(C5:C5)"}, {"*null*", "-3"}}}}};
  EXPECT_EQ(TableView(table, std::nullopt),
            "Planned expenses (20000000000000000000000000000600)\n"
            "===================================================\n"
            "\n"
            "Expenses\n"
            "  Café   0.1         1200\n"
            "  Total    ·  =SUM(C5:C5)\n"
            "  ·       -3\n");
}

TEST(PlanTableView, HasHeadingsOfRateAndMonths) {
  PlanRow row(14, "0");
  row[0] = "Rent";
  const std::string view = TableView(
      PlanTableContent{"20000000000000000000000000000600", {{"x", "5", {row}}}}, YearMonth{2003, 11});
  EXPECT_NE(view.find("x\n"
                      "        Rate  Nov  Dec  Jan  Feb  Mar  Apr  May  Jun  Jul  Aug  Sep  Oct\n"
                      "  Rent     0    0    0    0    0    0    0    0    0    0    0    0    0\n"),
            std::string::npos)
      << view;
}

TEST(PlanTableView, ReplacesControlCharactersWithBlanks) {
  const std::string view = TableView(PlanTableContent{"1",
                                                      {{"b",
                                                        "",
                                                        {{"a\nb\u009B"
                                                          "c",
                                                          "1"}}}}},
                                     std::nullopt);
  EXPECT_NE(view.find("  a b c  1\n"), std::string::npos) << view;
}

TEST(PlanTableView, ReportsMissingRowsAndBlocks) {
  EXPECT_EQ(TableView(PlanTableContent{"1", {}}, std::nullopt), "Table 1 (1)\n===========\n(no blocks)\n");
  EXPECT_NE(TableView(PlanTableContent{"1", {{"b", "", {}}}}, std::nullopt).find("b\n  (no rows)\n"),
            std::string::npos);
}

TEST(PlanTableView, ShowsAllTablesOrOneOrThrowsError9) {
  const TemporaryFolder folder;
  WriteText(folder / "garden.kpf", SmallPlanText());
  const auto plan = PlanFile::Open(folder / "garden.kpf");
  const std::string planned = TableView(*plan, expenseTable);
  const std::string actual = TableView(*plan, actualExpenseTable);
  EXPECT_EQ(planned.find("Planned expenses"), 0U);
  EXPECT_EQ(actual.find("Actual expenses"), 0U);
  EXPECT_EQ(TableView(*plan), planned + "\n" + actual);
  const auto error = ErrorOf([&] { TableView(*plan, "7"); });
  ASSERT_TRUE(error);
  EXPECT_EQ(error->Number(), error_number::subscriptOutOfRange);
}

TEST(PlanHeadings, HaveATitlePerTable) {
  EXPECT_EQ(TableTitle("20000000000000000000000000000400"), "Planned sales and costs");
  EXPECT_EQ(TableTitle("21000000000000000000000000000400"), "Actual sales and costs");
  EXPECT_EQ(TableTitle("21000000000000000000000000002000"), "Actual contribution margin expenses");
  EXPECT_EQ(TableTitle("20000000000000000000000000002090"), "Planned contribution margin");
  EXPECT_EQ(TableTitle("20000000000000000000000000000800"), "Past performance");
  EXPECT_EQ(TableTitle("20000000000000000000000000000999"), "Table 20000000000000000000000000000999");
  EXPECT_EQ(TableTitle("0600"), "Table 0600");
}

TEST(PlanHeadings, OfPastPerformanceAreTheYearsBeforeThePlan) {
  using Headings = std::vector<std::string>;
  EXPECT_EQ(ColumnHeadings("db_pastperformance_sales", 4, YearMonth{2003, 1}),
            (Headings{"2000", "2001", "2002"}));
  EXPECT_EQ(ColumnHeadings("db_pastperformance_sales", 4, YearMonth{2002, 7}),
            (Headings{"1999/00", "2000/01", "2001/02"}));
  EXPECT_EQ(ColumnHeadings("db_pastperformance_sales", 4, std::nullopt),
            (Headings{"Year 1", "Year 2", "Year 3"}));
  const Headings withMonths = ColumnHeadings("db_pastperformance_sales", 15, YearMonth{2003, 1});
  ASSERT_EQ(withMonths.size(), 14U);
  EXPECT_EQ(withMonths[1], "2001");
  EXPECT_EQ(withMonths[2], "Jan");
  EXPECT_EQ(withMonths[13], "Dec");
}

TEST(PlanHeadings, AreEmptyForRowsOfAnotherWidth) {
  EXPECT_TRUE(ColumnHeadings("db_income_range_cat3", 3, YearMonth{2003, 1}).empty());
  EXPECT_TRUE(ColumnHeadings("db_pastperformance_sales", 14, YearMonth{2003, 1}).empty());
}

TEST(PlanTableView, DoesNotPadToACellThatIsWiderThanALine) {
  PlanTableContent table{"1", {{"b", "", {{"Rent", std::string(300'000, '9'), "1"}}}}};
  for (int row = 0; row < 3'000; ++row) table.blocks[0].rows.push_back({"Fuel", "20", "300"});
  table.blocks[0].rows.push_back({std::string(300'000, 'x')});
  EXPECT_TRUE(tests::StaysWithinLimits(600'000, [&] {
    return TableView(table, std::nullopt).find("\n  Fuel  20  300\n") != std::string::npos;
  }));
}

}  // namespace
}  // namespace krnqb::plan_file
