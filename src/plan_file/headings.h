#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "plan_file/attributes.h"

namespace krnqb::plan_file {

/// What a table is, such as "Planned sales and costs" or "Past performance"; "Table" and the id for one that
/// is not known.
std::string TableTitle(std::string_view tableId);

/// What a block is, such as "Annual growth of sales"; its id for one that is not known.
std::string_view BlockTitle(std::string_view blockId) noexcept;

/// Headings of a block's columns after the row names, for rows of `cells` cells: the rate and the months of a
/// planned block, the months of an actual one, the past years (and months) of past performance. Months are
/// named from the plan's start on, or numbered when that is not known. Empty for rows of another width.
std::vector<std::string> ColumnHeadings(std::string_view blockId, std::size_t cells,
                                        std::optional<PlanStart> start);

}  // namespace krnqb::plan_file
