#include "import/growth/findings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "fakes/amount_tables.h"
#include "fakes/findings.h"
#include "fakes/import_surroundings.h"
#include "import/growth/formulas.h"

// Where the amounts of expense accounts go in the plan, and what is warned of.

namespace krnqb {
namespace {

using fakes::ActualRow;
using fakes::AmountBlock;
using fakes::PlannedRow;
using fakes::WideRow;
using Findings = std::vector<Finding>;

constexpr const char* block = "db_income_range_cat3";

class GrowthWarnings : public testing::Test {
 protected:
  GrowthWarnings() {
    state.options.balancesImport = BalImport_All;
    state.expenseSubtotals.emplace();
  }

  void Add(const std::string& name, double january, double december = 0) {
    cSubtotals account(name);
    account.SubTotal(1, january);
    account.SubTotal(12, december);
    state.expenseSubtotals->Add(account, name);
  }

  Findings Write(WarningCode code, const std::string& plannedRows, const std::string& actualRows,
                 const std::string& startRow = "startrow=\"9\"") {
    return WriteBlocks(code, AmountBlock(block, startRow, plannedRows) +
                                 AmountBlock(std::string(block) + "_actual", "", actualRows));
  }
  Findings WriteBlocks(WarningCode code, const std::string& blocks) {
    fakes::RecordingObserver observer;
    TablesDocument tables;
    tables.Add("1", XmlElement::Parse("<tableblocks>" + blocks + "</tableblocks>"), clock);
    WriteExpenseGrowth(state, tables, observer);
    return fakes::FindingsOf(observer, code);
  }

  ImportState state;
  fakes::FixedClock clock{LocalDateTime{2002, 1, 1, 9, 0, 0}};
};

TEST_F(GrowthWarnings, NameTwoRowsOfOneAccount) {
  Add("Rent", 1000, 10);
  const std::string actualRows = ActualRow("*null*") + ActualRow("*null*");
  EXPECT_EQ(Write(WarningCode::RowTwice, PlannedRow("RENT") + PlannedRow("Rent"), actualRows),
            (Findings{{.code = WarningCode::RowTwice, .name = "Rent", .other = "RENT", .amount = 1010}}));
}

TEST_F(GrowthWarnings, NameARowThatOccursTwice) {
  Add("Rent", 1000);
  const std::string actualRows = ActualRow("*null*") + ActualRow("*null*");
  EXPECT_EQ(Write(WarningCode::RowTwice, PlannedRow("Rent") + PlannedRow("Rent"), actualRows),
            (Findings{{.code = WarningCode::RowTwice, .name = "Rent", .other = "Rent", .amount = 1000}}));
}

TEST_F(GrowthWarnings, DoNotNameTwoRowsOfAnAccountWithoutAmounts) {
  Add("Rent", 0);
  const std::string actualRows = ActualRow("*null*") + ActualRow("*null*");
  EXPECT_EQ(Write(WarningCode::RowTwice, PlannedRow("RENT") + PlannedRow("Rent"), actualRows), Findings());
}

TEST_F(GrowthWarnings, DoNotNameRowsOfTwoAccounts) {
  Add("Rent", 1000);
  Add("Rental", 1000);
  const std::string actualRows = ActualRow("*null*") + ActualRow("*null*");
  EXPECT_EQ(Write(WarningCode::RowTwice, PlannedRow("Rental") + PlannedRow("Rent"), actualRows), Findings());
}

TEST_F(GrowthWarnings, NameTwoDepreciationRowsWithTheSameSums) {
  Add("Deprec", 70);
  const std::string rows = PlannedRow("Depreciation") + PlannedRow("Depreciation");
  EXPECT_EQ(
      Write(WarningCode::RowTwice, rows, ActualRow("*null*") + ActualRow("*null*")),
      (Findings{
          {.code = WarningCode::RowTwice, .name = "Depreciation", .other = "Depreciation", .amount = 70}}));
}

TEST_F(GrowthWarnings, NameAnActualRowOfAnotherName) {
  Add("Rent", 1000);
  EXPECT_EQ(
      Write(WarningCode::TwinMisaligned, PlannedRow("Rent"), ActualRow("Travel")),
      (Findings{{.code = WarningCode::TwinMisaligned, .name = "Rent", .other = "Travel", .amount = 1000}}));
}

TEST_F(GrowthWarnings, TakeAnEmptyOrNumericOrEqualNameAsAligned) {
  Add("Rent", 1000);
  for (const char* name : {"", "*null*", "0", "12.5", "Rent", "RENT"}) {
    EXPECT_EQ(Write(WarningCode::TwinMisaligned, PlannedRow("Rent"), ActualRow(name)), Findings()) << name;
  }
}

TEST_F(GrowthWarnings, DoNotCompareNamesIfOnlyThePlanIsWritten) {
  Add("Rent", 1000);
  state.options.balancesImport = BalImport_Planned;
  EXPECT_EQ(Write(WarningCode::TwinMisaligned, PlannedRow("Rent"), ActualRow("Travel")), Findings());
  EXPECT_EQ(Write(WarningCode::TwinMissing, PlannedRow("Rent"), ""), Findings());
}

TEST_F(GrowthWarnings, NameAmountsWithoutAnActualRow) {
  Add("Rent", 1000);
  Add("Gas", 7);
  EXPECT_EQ(Write(WarningCode::TwinMissing, PlannedRow("Rent") + PlannedRow("Gas"), ActualRow("*null*")),
            (Findings{{.code = WarningCode::TwinMissing, .name = "Gas", .amount = 7}}));
}

TEST_F(GrowthWarnings, NameAllAmountsWithoutAnActualBlock) {
  Add("Rent", 1000);
  Add("Gas", 7);
  const std::string planned = AmountBlock(block, "startrow=\"9\"", PlannedRow("Rent") + PlannedRow("Gas"));
  EXPECT_EQ(WriteBlocks(WarningCode::TwinMissing, planned).size(), 2U);
}

TEST_F(GrowthWarnings, DoNotMissAnActualRowForZeros) {
  Add("Rent", 0);
  EXPECT_EQ(Write(WarningCode::TwinMissing, PlannedRow("Rent"), ""), Findings());
}

TEST_F(GrowthWarnings, NameTheMonthsThatDoNotFitIntoARow) {
  Add("Rent", 1000, 10);
  const Finding december{.code = WarningCode::ShortRow, .name = "Rent", .amount = 10, .months = {12}};
  EXPECT_EQ(Write(WarningCode::ShortRow, WideRow("Rent", 12, "p"), ActualRow("*null*")), Findings{december});
  EXPECT_EQ(Write(WarningCode::ShortRow, PlannedRow("Rent"), WideRow("*null*", 11, "a")), Findings{december});
  const Finding all{.code = WarningCode::ShortRow, .name = "Rent", .amount = 1010, .months = {1, 12}};
  EXPECT_EQ(Write(WarningCode::ShortRow, WideRow("Rent", 1, "p"), ActualRow("*null*")), Findings{all});
}

TEST_F(GrowthWarnings, DoNotNameARowWithoutCellsForMonthsOfZero) {
  Add("Rent", 1000);
  EXPECT_EQ(Write(WarningCode::ShortRow, WideRow("Rent", 2, "p"), WideRow("*null*", 1, "a")), Findings());
}

TEST_F(GrowthWarnings, NameAnAccountWithoutARow) {
  Add("Rent", 1000);
  Add("Gas", 7, -2);
  Add("Unused", 0);
  EXPECT_EQ(Write(WarningCode::NoRow, PlannedRow("Rent"), ActualRow("*null*")),
            (Findings{{.code = WarningCode::NoRow, .name = "Gas", .amount = 5}}));
}

TEST_F(GrowthWarnings, TakeTheDepreciationRowAsARow) {
  Add("Deprec", 70);
  EXPECT_EQ(Write(WarningCode::NoRow, PlannedRow("Depreciation"), ActualRow("*null*")), Findings());
  EXPECT_EQ(Write(WarningCode::NoRow, PlannedRow("Rent"), ActualRow("*null*")).size(), 1U);
}

TEST_F(GrowthWarnings, DoNotMissARowOfAnAccountThatWasNotSelected) {
  state.options.krnProduct = QBKRN_BRI;
  state.selectedExpenses = XmlElement::Parse(
      "<expenseAccounts><account id=\"E-1\" selected=\"False\"><name>Rent</name></account>"
      "<account id=\"E-2\" selected=\"True\"><name>Gas</name></account></expenseAccounts>");
  Add("Rent", 1000);
  Add("Gas", 7);
  EXPECT_EQ(WriteBlocks(WarningCode::NoRow, AmountBlock("db_contributionmargin_cat2", "startrow=\"9\"", "")),
            (Findings{{.code = WarningCode::NoRow, .name = "Gas", .amount = 7}}));
}

TEST_F(GrowthWarnings, NameAnAccountInItsOwnRowAndInDepreciation) {
  Add("Deprec", 70);
  Add("Dep", 0);
  const std::string rows = PlannedRow("Depreciation") + PlannedRow("Deprec") + PlannedRow("Dep");
  const std::string actualRows = ActualRow("*null*") + ActualRow("*null*") + ActualRow("*null*");
  EXPECT_EQ(Write(WarningCode::DepreciationAndOwnRow, rows, actualRows),
            (Findings{{.code = WarningCode::DepreciationAndOwnRow, .name = "Deprec", .amount = 70}}));
}

TEST_F(GrowthWarnings, DoNotCountADepreciationAccountsOwnRowTwice) {
  Add("Depreciation", 70);
  EXPECT_EQ(Write(WarningCode::DepreciationAndOwnRow, PlannedRow("Depreciation"), ActualRow("*null*")),
            Findings());
}

TEST_F(GrowthWarnings, NameABlockWithoutAValidStartRow) {
  Add("Rent", 1000);
  const auto written = [&](const std::string& attribute) {
    return Write(WarningCode::NoStartRow, PlannedRow("Rent"), ActualRow("*null*"), attribute);
  };
  const auto expenses = [](const std::string& text) {
    return Findings{{.code = WarningCode::NoStartRow, .name = "expenses", .text = text}};
  };
  EXPECT_EQ(written(""), expenses(""));
  for (const char* text : {"x", "", "-3", "0", "32768"}) {
    EXPECT_EQ(written("startrow=\"" + std::string(text) + "\""), expenses(text)) << text;
  }
  EXPECT_EQ(written("startrow=\"1\""), Findings());
}

TEST_F(GrowthWarnings, NeedAStartRowOnlyForFormulas) {
  Add("Rent", 1000);
  state.options.balancesImport = BalImport_Actual;
  EXPECT_EQ(Write(WarningCode::NoStartRow, PlannedRow("Rent"), ActualRow("*null*"), ""), Findings());
  state.options.balancesImport = BalImport_All;
  EXPECT_EQ(Write(WarningCode::NoStartRow, PlannedRow("Other"), ActualRow("*null*"), ""), Findings());
}

}  // namespace
}  // namespace krnqb
