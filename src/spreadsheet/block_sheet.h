#pragma once

#include "spreadsheet/plan_sheets.h"
#include "spreadsheet/sheet.h"

namespace krnqb::spreadsheet {

/// Lays a block out as a sheet. Its rows and columns are those of the plan, so that its formulas mean the
/// cells that they mean there. Sums of the year, and the actual months beside planned ones, are to the right;
/// these are formulas that refer to the sheet of the actual block. `index` is that of the block.
Sheet SheetOfBlock(const PlanSheets& sheets, std::size_t index);

/// Returns a reference to a cell (counted from 0) of another sheet, such as "'Actual sales'!B6".
std::string ReferenceTo(std::string_view sheetName, std::uint32_t row, std::size_t column);

/// Returns widths that fit the cells, which are wide enough for any amount in them.
std::vector<double> WidthsFor(const Sheet& sheet);

}  // namespace krnqb::spreadsheet
