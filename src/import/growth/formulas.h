#pragma once

#include "import/state.h"
#include "krnqb/observer.h"
#include "plan/tables_document.h"

namespace krnqb {

// Each writer fills a planned block and its actual twin, the first of each id in the document. A row whose
// name has a subtotal gets, depending on `BalancesImport`: the growth rate in column B (every value except
// BalImport_None), formulas that grow each month's imported amount by that rate in the planned block
// (BalImport_Planned, BalImport_All), and the amounts themselves in the actual block (BalImport_Actual,
// BalImport_All). A statement that fails, for example at a missing cell, is reported to the observer and
// skipped. The document's lines end in LF afterwards, whatever was written.

/// Fills "db_sales_values_sales" from the income subtotals.
void WriteSalesGrowth(const ImportState& state, TablesDocument& tables, Observer& observer);

/// Fills "db_sales_values_costs" from the cost subtotals.
void WriteCostGrowth(const ImportState& state, TablesDocument& tables, Observer& observer);

/// Fills the product's expense block from the expense subtotals. A row "Depreciation" without a subtotal of
/// its own gets the sums of the accounts whose names occur within that word.
void WriteExpenseGrowth(const ImportState& state, TablesDocument& tables, Observer& observer);

}  // namespace krnqb
