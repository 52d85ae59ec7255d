#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "krnqb/enumerations.h"
#include "plan_file/changes.h"
#include "plan_file/content.h"
#include "plan_file/views/figures.h"
#include "support/year_month.h"

namespace krnqb::cli {

/// The options of an import that decide which figures its summary shows.
struct SummaryScope {
  QBKRN_BalancesImport balances = BalImport_None;
  QBKRNproduct product = QBKRN_ALD;
  bool pastPerformance = false;
  YearMonth planStart = {};
  YearMonth importStart = {};  ///< first of the twelve months that were imported
};

/// The figures of a year before and after an import.
struct FiguresChange {
  plan_file::PlanFigures before;
  plan_file::PlanFigures after;

  bool Any() const { return before != after; }
};

/// A row that an import has added, with the sums of its year; absent if that row has no such amounts.
struct AddedRow {
  std::string name;
  std::optional<double> planned;
  std::optional<double> actual;
};

/// A row of past performance after an import has changed it.
struct PastRow {
  std::string name;
  std::vector<std::string> headings;  ///< of its cells: years, or years and months
  std::vector<std::optional<double>> amounts;
};

/// What an import has changed, as figures.
struct ImportSummary {
  SummaryScope scope;
  std::optional<FiguresChange> planned;  ///< shown if planned amounts were imported, or they differ
  std::optional<FiguresChange> actual;   ///< shown if actual amounts were imported, or they differ
  std::int64_t growthCleared = 0;        ///< growth formulas that became empty cells
  std::array<std::vector<AddedRow>, plan_file::figureGroups.size()> added;  ///< by group, named rows only
  bool pastPerformanceImported = false;
  std::vector<PastRow> pastRows;
};

/// Returns the summary of an import from the plan's content before and after it, and the changes between
/// them.
ImportSummary SummarizeImport(const plan_file::PlanContent& before, const plan_file::PlanContent& after,
                              const std::vector<plan_file::TableChange>& changes, const SummaryScope& scope);

}  // namespace krnqb::cli
