#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "plan_file/content.h"
#include "spreadsheet/block_cells.h"

namespace krnqb::spreadsheet {

/// A block of a plan and the sheet that shows it.
struct BlockSheet {
  std::string sheetName;
  std::string tableId;
  plan_file::PlanBlock block;
  BlockCells cells;
  std::size_t months = 0;             ///< column of the first month; 0 if the block has no twelve months
  std::vector<std::string> headings;  ///< of the columns after the name; empty if they are unknown
  std::optional<std::size_t> actual;  ///< index of the sheet with the actual months of these rows

  /// Returns the row of the sheet (from 0) in which the block begins: that of its "startrow".
  std::uint32_t Row(std::size_t index) const noexcept;
  /// Returns the row of the column headings: above the block, or, if it begins in the first row, below it.
  std::uint32_t HeadingRow() const noexcept;
};

/// What a plan says that a sheet cannot show as it is.
struct SheetWarning {
  std::string where;
  std::string what;

  bool operator==(const SheetWarning&) const = default;
};

/// The blocks of a plan with the sheets that show them, in plan order. A block of actual amounts belongs to
/// the first planned block with its rows.
struct PlanSheets {
  std::string planName;  ///< the name of its file
  plan_file::PlanContent content;
  std::optional<QBKRNproduct> product;
  std::optional<YearMonth> start;
  std::vector<BlockSheet> blocks;
  std::vector<SheetWarning> warnings;
};

/// The names of the sheets that are not those of blocks.
inline constexpr std::string_view summarySheetName = "Summary";
inline constexpr std::string_view warningsSheetName = "Warnings";

/// Computes the blocks of a plan. Nameless rows have the names of `NameRowsAfterPlanned`. Throws Error 5,
/// with what to do, if a block is too large for a sheet.
PlanSheets SheetsOf(const plan_file::PlanFile& plan);
/// Does the same for tables that are not in a file.
PlanSheets SheetsOf(std::string planName, plan_file::PlanContent content, std::optional<QBKRNproduct> product,
                    std::optional<YearMonth> start);

}  // namespace krnqb::spreadsheet
