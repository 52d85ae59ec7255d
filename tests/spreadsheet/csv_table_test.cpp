#include "spreadsheet/csv_table.h"

#include <gtest/gtest.h>

#include "plans.h"
#include "spreadsheet/summary_sheet.h"
#include "spreadsheet/warnings_sheet.h"

namespace krnqb::spreadsheet {
namespace {

using tests::Planned;
using tests::SheetsOfBlocks;

TEST(CsvTablesOfAPlan, HoldComputedAmountsAndGuardedNames) {
  const PlanSheets sheets =
      SheetsOfBlocks({{"db_sales_values_sales",
                       "6",
                       {Planned("@Plants, \"all\"", "0.1", "=100 * (1 + B6)"), Planned("Seeds", "", "=C20*2"),
                        Planned("Total", "*null*", "-0.001")}}});
  const std::vector<CsvTable> tables = CsvTablesOf(sheets, SummaryOf(sheets), WarningsOf(sheets, {}));
  ASSERT_EQ(tables.size(), 3U);
  EXPECT_EQ(tables[0].fileName, "summary.csv");
  EXPECT_EQ(tables[1].fileName, "warnings.csv");
  EXPECT_EQ(tables[2].fileName, "01-planned-sales.csv");
  std::string expected = "Name,Rate,Jan,Feb,Mar,Apr,May,Jun,Jul,Aug,Sep,Oct,Nov,Dec\r\n";
  expected += "\"'@Plants, \"\"all\"\"\",0.1";
  for (int month = 0; month < 12; ++month) expected += ",110.00";
  expected += "\r\nSeeds,";
  for (int month = 0; month < 12; ++month) expected += ",'=C20*2";
  expected += "\r\nTotal,";
  for (int month = 0; month < 12; ++month) expected += ",0.00";
  EXPECT_EQ(tables[2].text, expected + "\r\n");
}

TEST(CsvTablesOfAPlan, HaveFileNamesThatEverySystemAccepts) {
  const PlanSheets sheets =
      SheetsOfBlocks({{"CON", "6", {}}, {"../..:x", "6", {}}, {"苗圃", "6", {}}, {"CON", "6", {}}});
  const std::vector<CsvTable> tables = CsvTablesOf(sheets, SummaryOf(sheets), WarningsOf(sheets, {}));
  EXPECT_EQ(tables[2].fileName, "01-con.csv");
  EXPECT_EQ(tables[3].fileName, "02-x.csv");
  EXPECT_EQ(tables[4].fileName, "03-block.csv");
  EXPECT_EQ(tables[5].fileName, "04-con-2.csv");
}

}  // namespace
}  // namespace krnqb::spreadsheet
