#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "plan_file/content.h"
#include "plan_file/file.h"

namespace krnqb::plan_file {

/// A row that only one of two states of a plan has. `row` counts from 0, in that state.
struct RowChange {
  std::string block;
  std::size_t row = 0;
  std::string name;  ///< cell 0; "*null*" for a row without a name

  bool operator==(const RowChange&) const = default;
};

/// A cell, of a row that both states have, that reads otherwise now. `row` counts from 0 in the later state,
/// `column` from 0. A cell that is not there reads as the empty text.
struct CellChange {
  std::string block;
  std::size_t row = 0;
  std::string name;  ///< the row's, as it is now
  std::size_t column = 0;
  std::string before;
  std::string after;

  bool operator==(const CellChange&) const = default;
};

/// What became of one table.
struct TableChange {
  std::string id;
  std::int64_t rowsAdded = 0;
  std::int64_t rowsRemoved = 0;
  std::int64_t cellsChanged = 0;     ///< in rows that stood there before, without the cleared formulas
  std::int64_t formulasCleared = 0;  ///< formulas, of rows that stood there before, that are empty cells now

  // The same one by one, in the order of the plan.
  std::vector<RowChange> added;
  std::vector<RowChange> removed;
  std::vector<CellChange> changed;
  std::vector<CellChange> cleared;

  bool Any() const noexcept { return rowsAdded + rowsRemoved + cellsChanged + formulasCleared > 0; }
};

/// Compares two states of a plan: one entry per table of `before`, unchanged ones included, in its order, and
/// then one per table that only `after` has. Blocks correspond by their id (blocks of one id in their order),
/// rows as `MatchRows` tells.
std::vector<TableChange> CompareTables(const PlanContent& before, const PlanContent& after);
std::vector<TableChange> CompareTables(const PlanFile& before, const PlanFile& after);

}  // namespace krnqb::plan_file
