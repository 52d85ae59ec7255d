#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "fakes/amount_tables.h"
#include "fakes/import_surroundings.h"
#include "import/growth/formulas.h"

namespace krnqb {
namespace {

using fakes::ActualRow;
using fakes::AmountBlock;
using fakes::Cells;
using fakes::CellsOf;
using fakes::PlannedRow;
using Texts = std::vector<std::string>;

class ExpenseGrowth : public testing::Test {
 protected:
  ExpenseGrowth() {
    state.options.balancesImport = BalImport_All;
    state.options.growthRateExpenses = 5;
    state.expenseSubtotals.emplace();
  }

  void Add(const std::string& description, double january, double december = 0) {
    cSubtotals record(description);
    record.SubTotal(1, january);
    record.SubTotal(12, december);
    state.expenseSubtotals->Add(record, description);
  }
  static std::string Blocks(const std::string& name, const std::string& row) {
    return AmountBlock(name, "startrow=\"5\"", PlannedRow(row)) +
           AmountBlock(name + "_actual", "", ActualRow(row));
  }
  TablesDocument Tables(const std::string& blocks) {
    TablesDocument tables;
    tables.Add("1", XmlElement::Parse("<tableblocks>" + blocks + "</tableblocks>"), clock);
    tables.UseLineFeeds();
    return tables;
  }
  /// Returns tables with the expense blocks of all products.
  TablesDocument BothTables(const std::string& row) {
    return Tables(Blocks("db_income_range_cat3", row) + Blocks("db_contributionmargin_cat2", row));
  }
  std::string Write(const std::string& row = "Depreciation") {
    TablesDocument tables = BothTables(row);
    WriteExpenseGrowth(state, tables, observer);
    return tables.Text();
  }
  /// Returns January and December of the actual row.
  Texts Actual(const std::string& written, const std::string& block = "db_income_range_cat3") const {
    const Texts cells = CellsOf(written, block + "_actual", 0);
    return {cells.at(1), cells.at(12)};
  }

  ImportState state;
  fakes::RecordingObserver observer;
  fakes::FixedClock clock{LocalDateTime{2002, 1, 1, 9, 0, 0}};
};

TEST_F(ExpenseGrowth, FillsTheBlockOfTheProduct) {
  Add("Rent", 100);
  for (const QBKRNproduct product : {QBKRN_ALD, QBKRN_COR}) {
    state.options.krnProduct = product;
    const std::string written = Write("Rent");
    EXPECT_EQ(Actual(written, "db_income_range_cat3"), (Texts{"100", "0"}));
    EXPECT_EQ(Actual(written, "db_contributionmargin_cat2"), (Texts{"a", "a"}));
    EXPECT_EQ(CellsOf(written, "db_income_range_cat3", 0)[1], "0.05");
    EXPECT_EQ(CellsOf(written, "db_contributionmargin_cat2", 0)[1], "p");
  }
  state.options.krnProduct = QBKRN_BRI;
  const std::string written = Write("Rent");
  EXPECT_EQ(Actual(written, "db_income_range_cat3"), (Texts{"a", "a"}));
  EXPECT_EQ(Actual(written, "db_contributionmargin_cat2"), (Texts{"100", "0"}));
}

TEST_F(ExpenseGrowth, ChangesNothingForAnotherProduct) {
  Add("Rent", 100);
  state.options.krnProduct = QBKRN_ALD;
  const std::string changed = Write("Rent");
  for (const int product : {0, 4, -1}) {
    state.options.krnProduct = static_cast<QBKRNproduct>(product);
    const std::string written = Write("Rent");
    EXPECT_EQ(written, BothTables("Rent").Text());
    EXPECT_NE(written, changed);
  }
}

TEST_F(ExpenseGrowth, SumsAccountsNamedWithinDepreciationInItsRow) {
  Add("Deprec", 1, 10);
  Add("preciation", 2, 20);
  Add("CIA", 4, 40);
  Add("Depreciation of cars", 100, 100);
  Add("Rent", 100, 100);
  for (const QBKRNproduct product : {QBKRN_ALD, QBKRN_BRI, QBKRN_COR}) {
    state.options.krnProduct = product;
    const std::string block = product == QBKRN_BRI ? "db_contributionmargin_cat2" : "db_income_range_cat3";
    const std::string written = Write();
    EXPECT_EQ(Actual(written, block), (Texts{"7", "70"})) << product;
    EXPECT_EQ(CellsOf(written, block, 0)[1], "0.05");
    EXPECT_EQ(CellsOf(written, block, 0)[2], "=7* (1 + B5)");
    EXPECT_EQ(CellsOf(written, block, 0)[13], "=70* (1 + B5)");
  }
}

TEST_F(ExpenseGrowth, IncludesAnAccountWithoutANameInDepreciation) {
  Add("", 3);
  Add("Rent", 100);
  EXPECT_EQ(Actual(Write()), (Texts{"3", "0"}));
}

TEST_F(ExpenseGrowth, SkipsADepreciationAmountIfTheSumIsOutOfRange) {
  constexpr double largest = std::numeric_limits<double>::max();
  Add("Deprec", largest, 1);
  Add("preciation", largest, 2);
  Add("CIA", -largest, 4);
  EXPECT_EQ(Actual(Write()), (Texts{"0", "7"})) << "the second amount is skipped, the third is added";
}

TEST_F(ExpenseGrowth, FindsAnAccountNamedDepreciationCaseInsensitively) {
  Add("DEPRECIATION", 8);
  Add("Deprec", 1);
  EXPECT_EQ(Actual(Write()), (Texts{"8", "0"}));
  EXPECT_EQ(Actual(Write("depreciation")), (Texts{"8", "0"}));
}

TEST_F(ExpenseGrowth, SkipsADepreciationRowInAnotherCase) {
  Add("Deprec", 1);
  for (const std::string row :
       {"depreciation", "DEPRECIATION", " Depreciation", "Deprecia", "Depreciation "}) {
    EXPECT_EQ(CellsOf(Write(row), "db_income_range_cat3", 0), Cells(row, 13, "p")) << row;
    EXPECT_EQ(Actual(Write(row)), (Texts{"a", "a"})) << row;
  }
}

TEST_F(ExpenseGrowth, WritesZerosInTheDepreciationRowWhenNoNameOccursInIt) {
  Add("Rent", 100);
  EXPECT_EQ(Actual(Write()), (Texts{"0", "0"}));
  state.expenseSubtotals.reset();
  const std::string written = Write();
  EXPECT_EQ(Actual(written), (Texts{"0", "0"}));
  EXPECT_EQ(CellsOf(written, "db_income_range_cat3", 0)[1], "0.05");
  EXPECT_EQ(CellsOf(written, "db_income_range_cat3", 0)[2], "=0* (1 + B5)");
}

TEST_F(ExpenseGrowth, SumsDepreciationInExpenseTablesOnly) {
  state.incomeSubtotals = fakes::ImportSurroundings::Zeros({"Deprec"});
  state.costSubtotals = fakes::ImportSurroundings::Zeros({"Deprec"});
  TablesDocument tables = Tables(Blocks("db_sales_values_sales", "Depreciation") +
                                 Blocks("db_sales_values_costs", "Depreciation"));
  const std::string before = tables.Text();
  WriteSalesGrowth(state, tables, observer);
  WriteCostGrowth(state, tables, observer);
  EXPECT_EQ(tables.Text(), before);
}

TEST_F(ExpenseGrowth, KeepsTheDepreciationRowWithoutBalances) {
  Add("Deprec", 1);
  state.options.balancesImport = BalImport_None;
  EXPECT_EQ(Actual(Write()), (Texts{"a", "a"}));
}

TEST_F(ExpenseGrowth, DoesNotChangeTheSubtotals) {
  Add("Deprec", 1);
  Write();
  EXPECT_EQ(state.expenseSubtotals->Count(), 1U);
  EXPECT_EQ(state.expenseSubtotals->Find("Depreciation"), nullptr);
}

}  // namespace
}  // namespace krnqb
