#pragma once

#include <vector>

#include "cli/explain/command.h"
#include "ledger/figures.h"

namespace krnqb::cli {

/// Returns the figures that the options ask for. Names are compared case-insensitively. Throws Failure, with
/// the nearest names, if the ledger has no such row or table, or no figure of the month.
std::vector<ledger::RowFigures> ChosenRows(const ledger::LedgerFile& ledger, const ExplainOptions& options);

}  // namespace krnqb::cli
