#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "plan_file/attributes.h"

namespace krnqb::plan_file {

/// Returns the title of a table, such as "Planned sales and costs" or "Past performance"; for an unknown
/// table, "Table" and the id.
std::string TableTitle(std::string_view tableId);

/// Returns the title of a block, such as "Annual growth of sales"; for an unknown block, its id.
std::string_view BlockTitle(std::string_view blockId) noexcept;

/// Returns a month as "March 2002".
std::string MonthOfYear(const YearMonth& month);

/// Returns the twelve months from `start` as "January to December 2002" or "July 2001 to June 2002".
std::string TwelveMonthsText(const YearMonth& start);

/// Returns the headings of a block's columns after the row names, for rows of `cells` cells: rate and months
/// of a planned block, months of an actual one, past years (and months) of past performance. Months are named
/// from the plan's start, or numbered if it is unknown. Empty if no layout has that many cells.
std::vector<std::string> ColumnHeadings(std::string_view blockId, std::size_t cells,
                                        std::optional<YearMonth> start);

}  // namespace krnqb::plan_file
