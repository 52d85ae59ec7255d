#pragma once

#include <string>

#include "ledger/file.h"

namespace krnqb::ledger::testing {

/// Returns everything that a ledger holds except its facts, as text: cells, sums with their bookings, lines
/// with what was left out. Amounts are written exactly.
std::string Listing(const LedgerFile& ledger);

}  // namespace krnqb::ledger::testing
