#pragma once

#include <vector>

#include "cli/report/transactions.h"
#include "html/fragment.h"
#include "ledger/figures.h"
#include "support/year_month.h"

namespace krnqb::cli {

/// Returns the amounts that an import brought in, by account and month: a chart, a table, and the accounts,
/// each to be opened to its months and these to what they are made of. Empty if the ledger has no figures.
/// `rows` are the ledger's rows.
html::Fragment CameIn(const ledger::LedgerFile& ledger, const std::vector<ledger::RowFigures>& rows,
                      const TransactionLists& lists, const YearMonth& start);

/// Returns the figures of past performance with what they are made of. Empty if the ledger does not contain
/// any.
html::Fragment PastFiguresMadeOf(const ledger::LedgerFile& ledger,
                                 const std::vector<ledger::RowFigures>& rows, const TransactionLists& lists);

}  // namespace krnqb::cli
