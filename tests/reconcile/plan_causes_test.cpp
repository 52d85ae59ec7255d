#include "reconcile/plan_causes.h"

#include <gtest/gtest.h>

#include "reconcile/amounts.h"

namespace krnqb::reconcile {
namespace {

using plan_file::FigureGroup;
using plan_file::RowFigures;

// The expenses of a plan whose amounts are all in January. The books have Rent 100, Fuel 30 and Deprec 7.
class ComparingPlans : public testing::Test {
 protected:
  ComparingPlans() {
    Book("Rent", 100);
    Book("Fuel", 30);
    Book("Deprec", 7);
    plan.lastImport.emplace();
  }

  void Book(const std::string& account, std::int64_t units) { Month(account).booked = Units(units); }
  void Row(const std::string& name, std::optional<double> january, const std::string& actualName = {}) {
    RowFigures row{.group = FigureGroup::Expenses,
                   .row = static_cast<std::int32_t>(plan.rows.size()) + 1,
                   .name = name,
                   .actualName = actualName,
                   .hasActualRow = true};
    row.months[0] = january;
    plan.rows.push_back(row);
  }
  void Imported(const std::string& name, std::vector<std::string> accounts) {
    imported.push_back({.group = Group::Expenses, .name = name, .accounts = std::move(accounts)});
  }
  void Written(const std::string& name, std::int32_t row, const std::string& january) {
    if (!plan.lastImport->rows) plan.lastImport->rows.emplace();
    plan.lastImport->rows->push_back(
        {.block = "db_income_range_cat3", .row = row, .name = name, .months = {january}});
  }
  MonthAmounts& Month(std::string_view account) {
    return table.At(table.LineOf(Group::Expenses, account)).months[0];
  }
  std::string Causes(std::string_view account) { return CausesOf(Month(account)); }
  void Add() {
    Imported("Rent", {"Rent"});
    Imported("Fuel", {"Fuel"});
    AddPlan(table, plan, imported);
  }

  WorkTable table;
  PlanAmounts plan;
  std::vector<ImportedRow> imported;
};

TEST_F(ComparingPlans, FindsNothingInAPlanAsItWasWritten) {
  Row("Rent", 100);
  Row("Fuel", 30);
  Book("Deprec", 0);
  Add();
  EXPECT_EQ(Causes("Rent"), "");
  EXPECT_EQ(Month("Rent").plan, Units(100));
  EXPECT_EQ(Month("Rent").written, Units(100));
}

TEST_F(ComparingPlans, NamesASecondRowOfAnAccount) {
  Row("Rent", 100);
  Row("RENT", 100);
  Imported("Rent", {"Rent"});
  Imported("RENT", {"Rent"});
  AddPlan(table, plan, imported);
  EXPECT_EQ(Causes("Rent"), "row-twice 100.00");
  EXPECT_EQ(Month("Rent").plan, Units(200));
}

TEST_F(ComparingPlans, NamesAMisalignedRowInBothAccounts) {
  Row("Rent", 100, "Fuel");
  Row("Fuel", 30);
  Add();
  EXPECT_EQ(Causes("Rent"), "misaligned-row -100.00");
  EXPECT_EQ(Causes("Fuel"), "misaligned-row 100.00");
  EXPECT_EQ(Month("Fuel").plan, Units(130));
  EXPECT_EQ(Month("Rent").plan, Units(0));
}

TEST_F(ComparingPlans, DoesNotTakeAnActualRowWithTheSameNameForMisaligned) {
  Row("Rent", 100, "RENT");
  Row("Fuel", 30);
  Add();
  EXPECT_EQ(Causes("Rent"), "");
}

TEST_F(ComparingPlans, NamesTheSumsOfDepreciation) {
  Row("Rent", 100);
  Row("Fuel", 30);
  Row("Depreciation", 7);
  Imported("Depreciation", {"Deprec"});
  Add();
  EXPECT_EQ(Causes("Depreciation"), "depreciation-sum 7.00");
  EXPECT_EQ(Causes("Deprec"), "depreciation-sum -7.00");
}

TEST_F(ComparingPlans, NamesAnAccountWithoutARow) {
  Row("Rent", 100);
  Row("Fuel", 30);
  Add();
  EXPECT_EQ(Causes("Deprec"), "no-row -7.00");
}

TEST_F(ComparingPlans, NamesACellThatARowDoesNotHave) {
  Row("Rent", std::nullopt);
  Row("Fuel", 30);
  Add();
  EXPECT_EQ(Causes("Rent"), "no-row -100.00");
}

TEST_F(ComparingPlans, NamesAccountsThatTheLastImportDidNotInclude) {
  plan.lastImport->expenses = false;
  Row("Rent", 80);
  Row("Fuel", std::nullopt);
  Add();
  EXPECT_EQ(Causes("Rent"), "not-imported 80.00; not-asked-for -100.00");
  EXPECT_EQ(Causes("Fuel"), "not-asked-for -30.00");
}

TEST_F(ComparingPlans, NamesAccountsThatWereNotSelected) {
  plan.product = QBKRN_BRI;
  Row("Rent", 100);
  Imported("Rent", {"Rent"});
  AddPlan(table, plan, imported);
  EXPECT_EQ(Causes("Fuel"), "not-asked-for -30.00");
}

TEST_F(ComparingPlans, NamesAmountsThatWereEditedSince) {
  plan.lastImport->asWritten = false;
  Row("Rent", 120);
  Row("Fuel", 30);
  Written("Rent", 1, "100");
  Written("Fuel", 2, "30");
  Add();
  EXPECT_EQ(Causes("Rent"), "edited-since 20.00");
  EXPECT_EQ(Month("Rent").written, Units(100));
  EXPECT_EQ(Causes("Fuel"), "");
}

TEST_F(ComparingPlans, NamesBooksThatHaveChangedSince) {
  Row("Rent", 90);
  Row("Fuel", 30);
  Add();
  EXPECT_EQ(Causes("Rent"), "books-changed -10.00");
}

TEST_F(ComparingPlans, NamesAnImportOfOtherMonths) {
  plan.lastImport->samePeriod = false;
  Row("Rent", 90);
  Row("Fuel", 30);
  Add();
  EXPECT_EQ(Causes("Rent"), "another-period -10.00");
  EXPECT_EQ(Causes("Fuel"), "");
}

TEST_F(ComparingPlans, NamesAmountsOfAPlanThatWasNeverImportedInto) {
  plan.lastImport.reset();
  Row("Rent", 90);
  Row("Fuel", 30);
  Add();
  EXPECT_EQ(Causes("Rent"), "not-imported -10.00");
}

TEST_F(ComparingPlans, NamesRowsOfTheOwners) {
  Row("Rent", 100);
  Row("Fuel", 30);
  Row("Gifts", 12);
  Row("", 3);
  Add();
  EXPECT_EQ(Causes("Gifts"), "not-imported 12.00");
  EXPECT_EQ(Causes("row 4"), "not-imported 3.00");
}

}  // namespace
}  // namespace krnqb::reconcile
