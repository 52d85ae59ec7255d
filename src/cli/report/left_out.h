#pragma once

#include "html/fragment.h"
#include "krnqb/import_report.h"

namespace krnqb::cli {

/// Returns the amounts that an import left out: by meaning and reason with number, sum and names, then each
/// of them, at most 200. Empty if nothing was left out.
html::Fragment LeftOut(const ImportReport& report);

}  // namespace krnqb::cli
