#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "krnqb/enumerations.h"
#include "plan_file/attributes.h"

namespace krnqb::cli {

/// `krnqb import` as it was typed; what is absent was not given.
struct ImportCommand {
  std::optional<std::string> companyFile;
  std::string planFile;
  bool expenses = false;
  bool income = false;
  bool pastPerformance = false;
  QBKRN_BalancesImport balances = BalImport_None;
  std::optional<std::int16_t> growthRateIncome;  ///< whole percent, as the two below
  std::optional<std::int16_t> growthRateCogs;
  std::optional<std::int16_t> growthRateExpenses;
  std::optional<QBKRNproduct> product;
  std::optional<YearMonth> planStart;
  std::optional<YearMonth> importStart;
  std::optional<std::int16_t> fiscalMonth;  ///< 1 to 12
  std::vector<std::string> selectedExpenses;
  bool selectAllExpenses = false;
  bool acceptIncomplete = false;
  bool strict = false;  ///< amounts that were left out make the import incomplete
  bool dryRun = false;
  std::optional<std::string> recordFile;
  std::optional<std::string> replayFile;
  std::optional<std::string> journalFile;
  bool json = false;
  bool quiet = false;
};

}  // namespace krnqb::cli
