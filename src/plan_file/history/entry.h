#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "krnqb/outside_world.h"

namespace krnqb::plan_file {

/// Versions have the numbers from 1 to this one.
inline constexpr std::int32_t highestVersion = 999'999;

/// How many versions a history keeps, besides the first one, unless a user wants more or fewer.
inline constexpr std::int32_t versionsKept = 20;

/// One state of a plan's file.
struct PlanVersion {
  std::string digest;
  /// The import whose result it is: the number of its entry, 0 for the plan before its first import; nullopt
  /// if that is unknown.
  std::optional<std::int32_t> import = 0;
  bool edited = false;  ///< whether another program has changed the plan since that import

  bool operator==(const PlanVersion&) const = default;
};

/// The amounts of a planned row and of its months as an import left them.
struct WrittenRow {
  std::string block;                     ///< the id of the planned block
  std::int32_t row = 1;                  ///< its place in the block, from 1
  std::string name;                      ///< empty if it has none
  std::vector<std::string> months = {};  ///< twelve number texts; empty where the plan has no amount

  bool operator==(const WrittenRow&) const = default;
};

/// An import that wrote a plan, as its history describes it.
struct ImportFacts {
  std::string product;               ///< ald, bri or cor
  std::string planStart;             ///< YYYY-MM, as the next two
  std::string periodFrom;            ///< first month of the imported amounts
  std::string periodTo;              ///< last month
  std::vector<std::string> options;  ///< as on a command line, such as "--balances all"
  std::int64_t rowsAdded = 0;
  std::int64_t rowsRemoved = 0;
  std::int64_t cellsChanged = 0;
  std::int64_t formulasCleared = 0;
  /// The rows with amounts, of the version that the import wrote; nullopt in descriptions without them.
  std::optional<std::vector<WrittenRow>> rows = {};

  bool operator==(const ImportFacts&) const = default;
};

/// One entry of a plan's history. An import or an undo replaced a version of the plan, which is kept under
/// the entry's number, by another one.
struct HistoryEntry {
  std::int32_t number = 0;            ///< from 1
  std::string when;                   ///< local time, YYYY-MM-DDTHH:MM:SS
  PlanVersion kept;                   ///< the version replaced
  PlanVersion written;                ///< the version written
  std::optional<ImportFacts> import;  ///< nullopt for an undo
  std::int32_t restored = 0;          ///< the number of the version that an undo brought back

  bool operator==(const HistoryEntry&) const = default;
};

/// Returns the moment as YYYY-MM-DDTHH:MM:SS.
std::string MomentText(const LocalDateTime& moment);

}  // namespace krnqb::plan_file
