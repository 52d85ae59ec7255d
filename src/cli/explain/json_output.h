#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "cli/explain/transaction_report.h"
#include "ledger/figures.h"

namespace krnqb::cli {

/// How the plan's file relates to a ledger.
enum class PlanState : std::uint8_t {
  Same,        ///< it is the version that the ledger belongs to
  NotWritten,  ///< it is another version; the ledger is that of a dry run
  Changed,     ///< it is another version
  Missing      ///< it cannot be read
};

/// Returns one JSON object with the figures of rows.
std::string ExplanationJson(const ledger::LedgerFile& ledger, PlanState plan,
                            const std::vector<ledger::RowFigures>& rows);

/// Returns one JSON object with where a transaction went.
std::string ExplanationJson(const ledger::LedgerFile& ledger, PlanState plan,
                            const std::vector<TransactionFate>& fates);

}  // namespace krnqb::cli
