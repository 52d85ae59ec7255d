#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "cli/batch/import_result.h"

namespace krnqb::cli {

/// How often a warning appears in many imports.
struct WarningTotal {
  std::string code;
  std::size_t imports = 0;
  std::size_t accounts = 0;  ///< that its warnings name, in all imports
};

/// What many imports did.
struct BatchOverview {
  std::string folder;                     ///< with the results, as it was typed
  std::vector<ImportResultFile> imports;  ///< the newest first
  std::size_t done = 0;
  /// How many imports have each result, the most frequent first.
  std::vector<std::pair<std::string, std::size_t>> byResult = {};
  std::int64_t rowsAdded = 0;
  std::int64_t cellsChanged = 0;
  std::int64_t formulasCleared = 0;
  std::int64_t amountsLeftOut = 0;
  std::optional<ExactAmount> sumLeftOut = {};  ///< nothing if a sum is unknown, or all of them are too large
  std::int64_t milliseconds = 0;
  std::vector<WarningTotal> warnings = {};  ///< in the most imports first, then by code

  std::size_t NotDone() const noexcept { return imports.size() - done; }
};

BatchOverview OverviewOf(std::string folder, std::vector<ImportResultFile> imports);

/// Returns a time as "2003-01-15 12:00:00", in UTC.
std::string TimeText(const WriteTime& time);

/// Returns the company of an import for people: its name, its path, or "?".
std::string CompanyText(const ImportResultFile& import);

/// Returns the plan of an import, or "?".
std::string PlanText(const ImportResultFile& import);

}  // namespace krnqb::cli
