#pragma once

#include <string>

#include "import/import_state.h"

namespace krnqb {

// Each writer takes the text of a "<tables>" document and gives it back with actual amounts and growth
// formulas.

std::string WriteSalesGrowth(const ImportState& state, std::string tablesText);
std::string WriteCostGrowth(const ImportState& state, std::string tablesText);
std::string WriteExpenseGrowth(const ImportState& state, std::string tablesText);

}  // namespace krnqb
