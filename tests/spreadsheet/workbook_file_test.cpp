#include "spreadsheet/workbook_file.h"

#include <gtest/gtest.h>

#include "krnqb/error.h"
#include "plans.h"
#include "spreadsheet/plan_workbook.h"
#include "temporary_folder.h"

namespace krnqb::spreadsheet {
namespace {

using krnqb::tests::ReadText;
using krnqb::tests::TemporaryFolder;
using krnqb::tests::WriteText;
using tests::Actual;
using tests::Planned;

Workbook Year() {
  const PlanSheets sheets = tests::SheetsOfBlocks(
      {{"db_sales_values_sales", "500", {Planned("=A_x0041_", "0.1", "=100 * (1 + B500)")}}},
      {{"db_sales_values_sales_actual", "6", {Actual("A", "90")}}});
  return WorkbookOf(sheets, {}, 1'000'000);
}

TEST(WorkbookFile, HasTheSameBytesForTheSameWorkbook) {
  const TemporaryFolder folder;
  for (const char* name : {"one.xlsx", "two.xlsx"}) {
    WriteText(folder / name, "");
    WriteWorkbook(Year(), folder / name);
  }
  const std::string bytes = ReadText(folder / "one.xlsx");
  EXPECT_TRUE(bytes.starts_with("PK"));
  EXPECT_EQ(bytes, ReadText(folder / "two.xlsx"));
  EXPECT_EQ(folder.FileNames(), (std::vector<std::string>{"one.xlsx", "two.xlsx"}))
      << "nothing is left beside it";
}

TEST(WorkbookFile, OfAnEmptyPlanCanBeWritten) {
  const TemporaryFolder folder;
  WriteText(folder / "empty.xlsx", "");
  WriteWorkbook(WorkbookOf(SheetsOf("empty.kpf", {}, std::nullopt, std::nullopt), {}, 1),
                folder / "empty.xlsx");
  EXPECT_TRUE(ReadText(folder / "empty.xlsx").starts_with("PK"));
}

TEST(WorkbookFile, ThatCannotBeWrittenIsAnError) {
  const TemporaryFolder folder;
  try {
    WriteWorkbook(Year(), folder / "missing" / "year.xlsx");
    FAIL() << "it was written";
  } catch (const Error& failure) {
    EXPECT_NE(failure.Description().find("/missing/year.xlsx: putting the file together failed: "),
              std::string::npos)
        << failure.Description();
    EXPECT_NE(failure.Description().find("; write to a folder with more space"), std::string::npos);
  }
}

}  // namespace
}  // namespace krnqb::spreadsheet
