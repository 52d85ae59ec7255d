#pragma once

#include <string>

#include "import/import_context.h"

namespace krnqb {

/// Takes the text of the past-performance table and gives it back with the figures of the past periods.
std::string WritePastPerformance(ImportContext& context, std::string tableText);

}  // namespace krnqb
