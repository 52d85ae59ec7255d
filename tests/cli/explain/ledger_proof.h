#pragma once

#include <cstdint>
#include <string>

namespace krnqb::cli::tests {

/// What a proof has looked at, so that a test can show that it was something.
struct ProvedLedger {
  std::int64_t amountCells = 0;
  std::int64_t lines = 0;
  std::int64_t bookings = 0;
};

/// Fails the test unless every amount cell of a ledger is the sum of its bookings, the text of every cell is
/// in the plan, every account's total of past performance is the sum of its months, and every line is in
/// cells or has a reason why it is not. `everyRow`: the plan has a row for every account of the import's own
/// months.
ProvedLedger ProveLedger(const std::string& ledger, const std::string& plan, bool everyRow);

/// Returns everything in the ledger but its facts.
std::string LedgerListing(const std::string& ledger);

}  // namespace krnqb::cli::tests
