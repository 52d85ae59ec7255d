#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/exchange/company_choice.h"
#include "support/exact_amount.h"
#include "support/year_month.h"

namespace krnqb::cli {

/// `krnqb reconcile` as it was typed.
struct ReconcileOptions : CompanyChoice {
  std::optional<std::string> replayFile;
  std::string planFile;
  std::optional<YearMonth> importStart;
  std::vector<std::string> statements;  ///< documents with the books' profit and loss
  ExactAmount tolerance = ExactAmount::FromMillionths(10'000);
  bool months = false;
  bool json = false;
  std::optional<std::string> reportFile;
};

}  // namespace krnqb::cli
