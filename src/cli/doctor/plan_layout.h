#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <vector>

#include "krnqb/enumerations.h"
#include "plan/table_identifiers.h"
#include "plan_file/content.h"

namespace krnqb::cli {

/// A planned block that accounts are merged into, and the block of its actual values.
struct BlockTwins {
  std::string_view plannedTable;
  std::string_view plannedBlock;
  std::string_view actualTable;
  std::string_view actualBlock;
  std::size_t closingRows;  ///< that stay last, such as totals
};

/// Returns the blocks of an edition that an import writes: sales, costs, expenses.
inline std::vector<BlockTwins> TwinsOf(QBKRNproduct product) {
  std::vector<BlockTwins> twins{
      {table_id::plannedSales, block_id::sales, table_id::actualSales, block_id::actualSales, 1},
      {table_id::plannedSales, block_id::costs, table_id::actualSales, block_id::actualCosts, 1}};
  if (product == QBKRN_BRI) {
    twins.push_back({table_id::plannedContributionMargin, block_id::contributionMargin,
                     table_id::actualContributionMargin, block_id::actualContributionMargin, 2});
  } else {
    twins.push_back({table_id::plannedIncomeRange, block_id::incomeRange, table_id::actualIncomeRange,
                     block_id::actualIncomeRange, 2});
  }
  return twins;
}

/// A block that an import needs.
struct NeededBlock {
  std::string_view table;
  std::string_view block;
  bool planned;  ///< whether growth formulas are written into it
};

inline std::vector<NeededBlock> NeededBlocks(QBKRNproduct product) {
  std::vector<NeededBlock> blocks;
  for (const BlockTwins& twins : TwinsOf(product)) {
    blocks.push_back({twins.plannedTable, twins.plannedBlock, true});
    blocks.push_back({twins.actualTable, twins.actualBlock, false});
  }
  return blocks;
}

/// Returns the table with this id, or null if the plan lacks it.
inline const plan_file::PlanTableContent* FindTable(const plan_file::PlanContent& content,
                                                    std::string_view id) {
  const auto found = std::ranges::find(content, id, &plan_file::PlanTableContent::id);
  return found == content.end() ? nullptr : &*found;
}

/// Returns a block of a table; null if the table or the block is missing.
inline const plan_file::PlanBlock* FindBlock(const plan_file::PlanContent& content, std::string_view tableId,
                                             std::string_view blockId) {
  const plan_file::PlanTableContent* const table = FindTable(content, tableId);
  if (table == nullptr) return nullptr;
  const auto found = std::ranges::find(table->blocks, blockId, &plan_file::PlanBlock::id);
  return found == table->blocks.end() ? nullptr : &*found;
}

}  // namespace krnqb::cli
