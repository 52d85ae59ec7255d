#pragma once

#include "cli/import/summary/figures.h"
#include "html/fragment.h"

namespace krnqb::cli {

/// Returns sales, cost of goods, expenses and the result before and after an import, as charts and tables.
/// Empty if no amounts were imported and none has changed.
html::Fragment BeforeAndAfter(const ImportSummary& summary);

/// Returns the rows that an import has added, with the sums of their year. Empty if no row was added.
html::Fragment AddedRows(const ImportSummary& summary);

/// Returns the changed rows of past performance. Empty if past performance was not imported.
html::Fragment PastPerformance(const ImportSummary& summary);

}  // namespace krnqb::cli
