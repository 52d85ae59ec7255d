#pragma once

#include "import/state.h"
#include "krnqb/observer.h"
#include "plan/tables_document.h"

namespace krnqb {

// Each writer fills a planned block and its actual twin, the first of each id in the document. A row whose
// name has a subtotal gets, depending on `BalancesImport`: the growth rate in column B (every value except
// BalImport_None), formulas in the planned block that grow each month's imported amount by that rate
// (BalImport_Planned, BalImport_All), and the imported amounts in the actual block (BalImport_Actual,
// BalImport_All). A failure, for example at a missing cell, skips that cell and is reported to the observer.
// Afterwards the document's lines end in LF, even if nothing was written.

/// Fills "db_sales_values_sales" from the income subtotals.
void WriteSalesGrowth(const ImportState& state, TablesDocument& tables, Observer& observer);

/// Fills "db_sales_values_costs" from the cost subtotals.
void WriteCostGrowth(const ImportState& state, TablesDocument& tables, Observer& observer);

/// Fills the product's expense block from the expense subtotals. If no subtotal is named "Depreciation", a
/// row with that name gets the sums of the accounts whose names occur within that word.
void WriteExpenseGrowth(const ImportState& state, TablesDocument& tables, Observer& observer);

}  // namespace krnqb
