#pragma once

#include <optional>
#include <string>
#include <vector>

#include "html/table.h"
#include "plan_file/views/amounts.h"
#include "support/exact_amount.h"
#include "support/year_month.h"

namespace krnqb::cli {

/// Returns a cell with an amount of money for people, and the amount with all its digits for programs. A
/// missing amount is an empty cell.
html::Cell AmountCell(double amount);
html::Cell AmountCell(const std::optional<double>& amount);
html::Cell AmountCell(const ExactAmount& amount);

/// Returns cells with twelve months and their sum.
std::vector<html::Cell> YearCells(const plan_file::YearAmounts& year);

/// Returns the headings of twelve months from `start`: "Jan" and so on, or "Jul 2002" and so on if they are
/// not in one year.
std::vector<std::string> MonthHeadings(const YearMonth& start);

/// Returns the columns of a table with twelve months and their sum, the first of them headed `names`.
std::vector<html::Column> YearColumns(const std::string& names, const YearMonth& start);

/// Returns a number of things: "1 row", "12 rows".
std::string Counted(std::int64_t count, std::string_view singular, std::string_view plural);

}  // namespace krnqb::cli
