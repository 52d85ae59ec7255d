#include "plan/account_writers.h"

#include "plan/account_rows.h"
#include "plan/block_rows.h"
#include "plan/table_identifiers.h"

namespace krnqb {
namespace {

enum class DepreciationRows { Kept, TakenOut };

// A planned table, its table of actual values, and the blocks that an account list is merged into.
struct AccountTables {
  std::string_view plannedId;
  std::string_view actualId;
  std::string_view mainBlock;
  TwinBlocks twins;
  std::int16_t rowsKeptBelow;
  DepreciationRows depreciationRows = DepreciationRows::Kept;
};

void TakeOutDepreciation(std::vector<NewAccountRow>& newRows) {
  std::erase_if(newRows, [](NewAccountRow& added) {
    const bool depreciation = depreciationKeyword.find(added.name) != std::string_view::npos;
    if (depreciation) added.row.Remove();
    return depreciation;
  });
}

void WriteAccounts(TablesDocument& changed, const AccountTables& tables, const XmlElement& accounts,
                   const HostPlan& plan, Clock& clock) {
  std::vector<NewAccountRow> newRows;
  if (const XmlElement planned = plan.ReadPlanTable(tables.plannedId)) {
    MergeAccountRows(planned, tables.mainBlock, accounts, newRows, tables.twins, tables.rowsKeptBelow);
    if (tables.depreciationRows == DepreciationRows::TakenOut) TakeOutDepreciation(newRows);
    changed.Add(tables.plannedId, planned, clock);
  }
  if (const XmlElement actual = plan.ReadPlanTable(tables.actualId)) {
    MergeAccountRows(actual, {}, accounts, newRows, tables.twins, tables.rowsKeptBelow);
    changed.Add(tables.actualId, actual, clock);
  }
}

}  // namespace

void WriteSalesAccounts(TablesDocument& changed, const XmlElement& accounts, const HostPlan& plan,
                        Clock& clock) {
  const AccountTables tables{.plannedId = table_id::plannedSales,
                             .actualId = table_id::actualSales,
                             .mainBlock = block_id::sales,
                             .twins = {"db_sales_values_sales_actual", "db_sales_values_annual_growth",
                                       "db_sales_values_sales_annual_growth"},
                             .rowsKeptBelow = 1};
  WriteAccounts(changed, tables, accounts, plan, clock);
}

void WriteCostAccounts(TablesDocument& changed, const XmlElement& accounts, const HostPlan& plan,
                       Clock& clock) {
  const AccountTables tables{.plannedId = table_id::plannedSales,
                             .actualId = table_id::actualSales,
                             .mainBlock = block_id::costs,
                             .twins = {"db_sales_values_costs_actual", "db_sales_values_costs_annual_growth"},
                             .rowsKeptBelow = 1};
  WriteAccounts(changed, tables, accounts, plan, clock);
}

void WriteIncomeRangeAccounts(TablesDocument& changed, const XmlElement& accounts, const HostPlan& plan,
                              Clock& clock) {
  const AccountTables tables{.plannedId = table_id::plannedIncomeRange,
                             .actualId = table_id::actualIncomeRange,
                             .mainBlock = block_id::incomeRange,
                             .twins = {"db_income_range_cat3_actual"},
                             .rowsKeptBelow = 2,
                             .depreciationRows = DepreciationRows::TakenOut};
  WriteAccounts(changed, tables, accounts, plan, clock);
}

void WriteContributionMarginAccounts(TablesDocument& changed, const XmlElement& accounts,
                                     const HostPlan& plan, Clock& clock) {
  const AccountTables tables{.plannedId = table_id::plannedContributionMargin,
                             .actualId = table_id::actualContributionMargin,
                             .mainBlock = block_id::contributionMargin,
                             .twins = {"db_contributionmargin_cat2_actual"},
                             .rowsKeptBelow = 2};
  WriteAccounts(changed, tables, accounts, plan, clock);
}

}  // namespace krnqb
