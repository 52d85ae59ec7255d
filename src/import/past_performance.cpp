#include "import/past_performance.h"

namespace krnqb {

// Amounts are not imported yet: the table comes back as it is.
std::string WritePastPerformance(ImportContext& /*context*/, std::string tableText) {
  return tableText;
}

}  // namespace krnqb
