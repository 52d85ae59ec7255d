#pragma once

#include <optional>
#include <string>

#include "cli/exchange/company_choice.h"
#include "support/year_month.h"

namespace krnqb::cli {

/// `krnqb record` as it was typed.
struct RecordOptions : CompanyChoice {
  YearMonth planStart;
  std::optional<YearMonth> from;
  std::optional<YearMonth> to;
  std::string outFile;
  bool quiet = false;
};

}  // namespace krnqb::cli
