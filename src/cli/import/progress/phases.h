#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "krnqb/enumerations.h"
#include "support/year_month.h"

namespace krnqb::cli {

/// What decides which phases an import has.
struct ImportScope {
  bool expenses = false;
  bool income = false;
  bool pastPerformance = false;
  QBKRN_BalancesImport balances = BalImport_None;
  QBKRNproduct product = QBKRN_ALD;
  std::int16_t majorVersion = 0;  ///< of the processor: 1 reads transactions, 2 reports
  YearMonth planStart = {};
  YearMonth importStart = {};  ///< first of the twelve months to import
};

/// How far an import has come.
struct ImportPosition {
  double done = 0;    ///< the share of the work that is done, 0 to 1
  std::string phase;  ///< what it does now, such as "reading expenses, March 2002"
};

/// Puts the progress events of an import on one scale. The component counts from 0 to 100 for each operation:
/// for both passes over the account tables, the months of expenses and of sales, and each past period. Their
/// order follows from the options, so that each event has its place.
class ImportPhases {
 public:
  explicit ImportPhases(const ImportScope& scope);

  /// Returns the position that an event announces. An event that is no longer expected has no effect: the
  /// position never goes back.
  const ImportPosition& Next(std::int16_t percent, std::string_view description);

  /// Returns the position when everything has been read.
  const ImportPosition& End();

 private:
  // An event, and the work between it and the next one.
  struct Step {
    std::int16_t percent = 0;
    std::string_view description;
    std::string phase;
    double work = 0;
  };

  void AddAccountPass(const ImportScope& scope, bool first);
  void AddMonths(std::string_view description, std::string_view phase, const YearMonth& start);
  void AddPastTransactions(const ImportScope& scope);
  void AddPastReports(const ImportScope& scope);

  std::vector<Step> steps_;
  std::size_t next_ = 0;
  double doneBeforeNext_ = 0;
  double work_ = 0;
  ImportPosition position_;
};

}  // namespace krnqb::cli
