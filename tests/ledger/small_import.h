#pragma once

#include <filesystem>
#include <string>

#include "ledger/writer.h"

namespace krnqb::ledger::testing {

/// The facts of a small import.
LedgerFacts SmallFacts();

/// Passes a small import to a receiver: three bills of two accounts, an invoice with a cost of sale, a spread
/// balance that replaces an expense, a line that is left out, and past performance of two periods.
void ReadSmallImport(LedgerWriter& writer);

/// Writes the ledger of the small import.
void WriteSmallLedger(const std::filesystem::path& file);

}  // namespace krnqb::ledger::testing
