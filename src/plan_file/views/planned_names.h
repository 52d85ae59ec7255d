#pragma once

#include "plan_file/content.h"

namespace krnqb::plan_file {

/// Names the rows that an import adds without a name. A nameless row (its first cell is empty or a number) of
/// an actual block, or of an annual growth block, gets the name of the planned row at the same place, in
/// parentheses: "(Rent)". A row without such a planned row stays nameless.
void NameRowsAfterPlanned(PlanContent& content);

}  // namespace krnqb::plan_file
