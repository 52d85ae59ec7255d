#pragma once

#include "spreadsheet/plan_sheets.h"
#include "spreadsheet/sheet.h"

namespace krnqb::spreadsheet {

/// The first sheet: sales, cost of goods, expenses and result of each month and the year, planned and actual,
/// with two charts. A sum is a formula over the rows of its block if that amounts to the plan's figure (see
/// `plan_file::FiguresOf`), else the figure.
Sheet SummaryOf(const PlanSheets& sheets);

/// Returns a warning for each row with amounts that the summary lacks.
std::vector<SheetWarning> SummaryWarnings(const PlanSheets& sheets);

/// Returns the product of a plan; of one that does not declare it, that to which its expenses belong.
QBKRNproduct ProductOf(const PlanSheets& sheets) noexcept;

}  // namespace krnqb::spreadsheet
