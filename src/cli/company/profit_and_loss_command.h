#pragma once

#include <optional>
#include <string>

#include "cli/console/streams.h"
#include "support/year_month.h"

namespace krnqb::cli {

/// `krnqb company profit-and-loss` as it was typed.
struct ProfitAndLossOptions {
  std::string file;
  std::optional<YearMonth> from;
  std::optional<YearMonth> to;
  bool months = false;
  bool json = false;
};

/// Prints a company's profit and loss from its own ledger, and the accounts whose balances the loaded
/// transactions do not explain. Without a period it is of the fiscal year of the last transaction; with one
/// end of it, of twelve months. Throws Failure (WrongUsage) if the period ends before it begins or has more
/// than 240 months, and with Failed if no period is given and the company has no transactions.
ExitCode Run(const ProfitAndLossOptions& options, const Console& console);

}  // namespace krnqb::cli
