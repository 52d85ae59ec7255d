#pragma once

#include <string_view>

#include "plan_file/content.h"

namespace krnqb::plan_file {

/// Names the rows that an import adds without a name. A nameless row (its first cell is empty or a number) of
/// an actual block, or of an annual growth block, gets the name of the planned row at the same place, in
/// parentheses: "(Rent)". A row without such a planned row stays nameless.
void NameRowsAfterPlanned(PlanContent& content);

/// Returns the id of the planned block that has a row for each row of an actual or an annual growth block;
/// empty for any other block.
std::string_view PlannedTwinId(std::string_view blockId) noexcept;

/// Returns whether the first cell of a row in a block with a planned twin names nothing: it is empty or a
/// number.
bool IsNamelessCell(std::string_view cell);

}  // namespace krnqb::plan_file
