#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "cli/import/summary/figures.h"

namespace krnqb::cli {

/// What a table of figures is called: "Actual amounts", and the first of the months that they are of.
struct YearTableTitle {
  std::string_view amounts;
  YearMonth firstMonth;
};

/// Returns a table of a year's figures: for each group and the result a line before and one after the import,
/// or a single line "same" if nothing has changed, with twelve months and their sum. No line is longer than
/// `width` columns: where that is needed the year is split into halves, and amounts that are too long for
/// that are rounded to whole units, which the title then says. `start` is the plan's first month.
std::string YearTable(const YearTableTitle& title, const FiguresChange& figures, const YearMonth& start,
                      std::size_t width);

}  // namespace krnqb::cli
