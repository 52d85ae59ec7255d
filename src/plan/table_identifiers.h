#pragma once

#include <array>
#include <string_view>
#include <vector>

#include "krnqb/enumerations.h"

namespace krnqb {

/// The ids of plan tables. "20" begins the id of a table of planned values, "21" that of its actual twin.
namespace table_id {
inline constexpr std::string_view plannedSales = "20000000000000000000000000000400";
inline constexpr std::string_view actualSales = "21000000000000000000000000000400";
inline constexpr std::string_view plannedIncomeRange = "20000000000000000000000000000600";
inline constexpr std::string_view actualIncomeRange = "21000000000000000000000000000600";
inline constexpr std::string_view pastPerformance = "20000000000000000000000000000800";
inline constexpr std::string_view plannedContributionMargin = "20000000000000000000000000002000";
inline constexpr std::string_view actualContributionMargin = "21000000000000000000000000002000";
inline constexpr std::string_view contributionMarginSummary = "20000000000000000000000000002090";
}  // namespace table_id

/// The ids of the blocks that account rows and amounts are written into.
namespace block_id {
inline constexpr std::string_view sales = "db_sales_values_sales";
inline constexpr std::string_view actualSales = "db_sales_values_sales_actual";
inline constexpr std::string_view costs = "db_sales_values_costs";
inline constexpr std::string_view actualCosts = "db_sales_values_costs_actual";
inline constexpr std::string_view incomeRange = "db_income_range_cat3";
inline constexpr std::string_view actualIncomeRange = "db_income_range_cat3_actual";
inline constexpr std::string_view contributionMargin = "db_contributionmargin_cat2";
inline constexpr std::string_view actualContributionMargin = "db_contributionmargin_cat2_actual";
}  // namespace block_id

/// A planned table and the table of its actual values.
struct TableTwins {
  std::string_view planned;
  std::string_view actual;
  std::string_view plannedName;  ///< for messages
  std::string_view actualName;
};

/// Every table that has a twin.
inline constexpr std::array<TableTwins, 3> tableTwins{
    {{table_id::plannedSales, table_id::actualSales, "planned sales and costs", "actual sales and costs"},
     {table_id::plannedIncomeRange, table_id::actualIncomeRange, "planned expenses", "actual expenses"},
     {table_id::plannedContributionMargin, table_id::actualContributionMargin, "planned contribution margin",
      "actual contribution margin"}}};

/// The text of a cell that holds no value.
inline constexpr std::string_view emptyCellText = "*null*";

/// The name of the row in which the plan keeps depreciation.
inline constexpr std::string_view depreciationKeyword = "Depreciation";

/// Returns the ids of the tables that an import for a product may change, in the order of
/// `QBDataExchange::GetTablesAffected`; none for an unknown product.
std::vector<std::string_view> TablesAffected(QBKRNproduct product);

}  // namespace krnqb
