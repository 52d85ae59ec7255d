#pragma once

#include <string>
#include <vector>

#include "spreadsheet/plan_sheets.h"
#include "spreadsheet/sheet.h"

namespace krnqb::spreadsheet {

/// A CSV file: its name, and its contents in UTF-8.
struct CsvTable {
  std::string fileName;
  std::string text;
};

/// Returns a plan as CSV files: the summary, the warnings, and one for each block, numbered in plan order,
/// such as "01-planned-sales.csv". Amounts have two decimals and are computed; a formula that is not computed
/// is a text. Names and other texts are written as `files::CsvLine::Text` does.
std::vector<CsvTable> CsvTablesOf(const PlanSheets& sheets, const Sheet& summary, const Sheet& warnings);

}  // namespace krnqb::spreadsheet
