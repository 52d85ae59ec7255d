#include "import/report_reading.h"

namespace krnqb {

// Amounts are not imported yet: the report changes nothing.
void ParseProfitAndLossReport(const XmlElement& /*response*/, std::optional<SubtotalCollection>& /*target*/) {
}

}  // namespace krnqb
