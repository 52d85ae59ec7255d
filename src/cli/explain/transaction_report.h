#pragma once

#include <string>
#include <utility>
#include <vector>

#include "ledger/figures.h"

namespace krnqb::cli {

/// An amount of a line that was booked, and where it ended.
struct BookedAmount {
  ledger::LedgerBooking booking;
  bool replaced = false;  ///< the sum was set to a spread balance afterwards
  ledger::LedgerSlot slot;
  std::vector<ledger::LedgerCell> cells;  ///< that show it; empty if it is replaced
};

/// Where a line of a transaction went.
struct LineFate {
  ledger::LedgerLine line;
  std::vector<BookedAmount> booked;
  std::vector<ledger::LedgerOmission> omissions;
  std::vector<ledger::LedgerBooking> takenBack;  ///< by sales that billed the line to its customer
};

struct TransactionFate {
  ledger::LedgerDocument document;
  std::vector<LineFate> lines;
};

/// Returns where the lines of a transaction went, once for each time that it was read. Throws Failure if the
/// ledger has no such transaction.
std::vector<TransactionFate> FatesOf(const ledger::LedgerFile& ledger, const std::string& transactionId);

/// Returns why an amount of a line is in no cell, or an empty text if it is in one.
std::string WhyInNoCell(const BookedAmount& booked);
/// Returns why nothing was booked for a line although nothing is wrong with it.
std::string WhyNothing(const LineFate& fate);

/// Returns the same for people.
std::string TransactionReport(const ledger::LedgerFile& ledger, const std::vector<TransactionFate>& fates,
                              std::size_t width);

}  // namespace krnqb::cli
