#pragma once

#include <optional>
#include <string>

#include "cli/import/outcome.h"
#include "cli/reconcile/output.h"
#include "cli/report/witness.h"
#include "ledger/file.h"

namespace krnqb::cli {

/// What a page about an import shows.
struct ImportStory {
  const ImportOutcome& outcome;                ///< with its basis
  const ledger::LedgerFile* ledger = nullptr;  ///< null if the import has no figures
  std::optional<ReconcileResult> reconciliation = {};
  std::string whyNotReconciled = {};  ///< a sentence; empty if there is a reconciliation, or nothing to say
  ImportTimes times = {};
  std::string footer = {};
};

/// Returns the page about an import, also about one that failed.
std::string ImportPage(const ImportStory& story);

}  // namespace krnqb::cli
