#pragma once

#include <string>
#include <string_view>

#include "files/operations.h"
#include "ledger/writer.h"
#include "plan_file/history/entry.h"

namespace krnqb::cli {

/// The ledger that an import writes. Every step throws Failure if the ledger cannot be written; the plan has
/// then not been written either.
class LedgerOutput {
 public:
  /// Creates the ledger beside its place. `remedy` is what the user can do if it cannot be written; it must
  /// outlive the object.
  LedgerOutput(const std::string& file, std::string_view remedy);

  ledger::LedgerWriter& Writer() noexcept { return writer_; }

  /// Completes the ledger.
  void Finish(const ledger::LedgerFacts& facts);
  /// Puts it in its place. Unless `Keep` is called, the destructor restores what was there before.
  void Place();
  void Keep() noexcept { writer_.Keep(); }

 private:
  std::string_view remedy_;
  files::SystemFileOperations operations_;
  ledger::LedgerWriter writer_;
};

/// Returns the facts of an import that its ledger shares with the plan's history, and the program's version.
ledger::LedgerFacts FactsForLedger(const plan_file::ImportFacts& import);

}  // namespace krnqb::cli
