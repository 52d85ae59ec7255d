#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "cli/exchange/company_choice.h"
#include "krnqb/enumerations.h"
#include "plan_file/attributes.h"
#include "plan_file/history/entry.h"
#include "qbxml/exchange_header.h"

namespace krnqb::cli {

/// The options of `krnqb import`; those that were not given are empty or false.
struct ImportCommand : CompanyChoice {
  std::string planFile;
  bool expenses = false;
  bool income = false;
  bool pastPerformance = false;
  QBKRN_BalancesImport balances = BalImport_None;
  std::optional<AmountsPath> amountsFrom;        ///< transactions or reports
  std::optional<std::int16_t> growthRateIncome;  ///< annual growth in whole percent, as the next two
  std::optional<std::int16_t> growthRateCogs;
  std::optional<std::int16_t> growthRateExpenses;
  std::optional<QBKRNproduct> product;
  std::optional<YearMonth> planStart;
  std::optional<YearMonth> importStart;
  std::optional<std::int16_t> fiscalMonth;  ///< 1 to 12
  std::vector<std::string> selectedExpenses;
  bool selectAllExpenses = false;
  bool acceptIncomplete = false;
  bool strict = false;  ///< left-out amounts make the import incomplete
  bool dryRun = false;
  std::int32_t keptVersions = plan_file::versionsKept;  ///< in the plan's history, besides the first one
  std::optional<std::string> recordFile;
  std::optional<std::string> replayFile;
  std::optional<std::string> journalFile;
  std::optional<std::string> ledgerFile;
  std::optional<std::string> reportFile;
  bool json = false;
  bool quiet = false;
};

}  // namespace krnqb::cli
