#pragma once

#include <optional>
#include <string>

#include "cli/console/streams.h"
#include "support/year_month.h"

namespace krnqb::cli {

/// The options of `krnqb explain`. Either a row or a transaction has to be given.
struct ExplainOptions {
  std::string ledger;
  std::optional<std::string> row;
  std::optional<std::string> table;
  std::optional<YearMonth> month;
  std::optional<std::string> transaction;
  bool json = false;
};

/// Prints what the figures of a row are made of, or where the lines of a transaction went.
ExitCode Run(const ExplainOptions& options, const Console& console);

}  // namespace krnqb::cli
