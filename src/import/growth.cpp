#include "import/growth.h"

namespace krnqb {

// Amounts are not imported yet: the tables come back as they are.

std::string WriteSalesGrowth(const ImportState& /*state*/, std::string tablesText) {
  return tablesText;
}

std::string WriteCostGrowth(const ImportState& /*state*/, std::string tablesText) {
  return tablesText;
}

std::string WriteExpenseGrowth(const ImportState& /*state*/, std::string tablesText) {
  return tablesText;
}

}  // namespace krnqb
