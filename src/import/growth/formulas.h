#pragma once

#include <string>

#include "import/state.h"
#include "krnqb/observer.h"

namespace krnqb {

// Each writer takes the text of a "<tables>" document with a planned block and its actual twin, and gives it
// back changed. By `BalancesImport` the rows whose name is a subtotal's get: the growth rate in column B (all
// but none), formulas that grow each month's imported amount by that rate in the planned block (planned,
// all), the amounts themselves in the actual block (actual, all). A statement that fails, such as for a
// missing cell, is told to the observer and skipped. The empty text when the text is no document.

/// "db_sales_values_sales" from the income subtotals.
std::string WriteSalesGrowth(const ImportState& state, const std::string& tablesText, Observer& observer);

/// "db_sales_values_costs" from the cost subtotals.
std::string WriteCostGrowth(const ImportState& state, const std::string& tablesText, Observer& observer);

/// The expense block of the product from the expense subtotals. A row "Depreciation" that is no account gets
/// the sums of the accounts whose names occur within that word.
std::string WriteExpenseGrowth(const ImportState& state, const std::string& tablesText, Observer& observer);

}  // namespace krnqb
