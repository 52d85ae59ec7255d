#pragma once

#include <ctime>

#include "plan_file/file.h"
#include "spreadsheet/plan_sheets.h"
#include "spreadsheet/sheet.h"
#include "spreadsheet/warnings_sheet.h"

namespace krnqb::spreadsheet {

/// Returns a plan as a workbook: the summary, the warnings, then a sheet for each block, in plan order.
Workbook WorkbookOf(const PlanSheets& sheets, const ExportNotes& notes, std::time_t created);

/// Returns the day on which a table of the plan was last saved, as its save stamps say, so that the same plan
/// makes the same workbook; the first day of 1980 if no stamp names a day after 1980. In seconds from 1970.
std::time_t LastSaved(const plan_file::PlanFile& plan);

}  // namespace krnqb::spreadsheet
