#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "plan_file/content.h"
#include "plan_file/file.h"

namespace krnqb::plan_file {

/// A row that exists in only one of two states of a plan. `row` is its index in that state, from 0.
struct RowChange {
  std::string block;
  std::size_t row = 0;
  std::string name;    ///< cell 0; "*null*" for a row without a name
  PlanRow cells = {};  ///< all of its cells

  bool operator==(const RowChange&) const = default;
};

/// A cell that differs between two states of the same row. `row` is the index in the later state, from 0;
/// `column` counts from 0. A missing cell counts as the empty text. Of a block id or a name of more than 200
/// bytes only the beginning is kept.
struct CellChange {
  std::string block;
  std::size_t row = 0;
  std::string name;  ///< cell 0 of the row in the later state
  std::size_t column = 0;
  std::string before;
  std::string after;
  std::size_t width = 0;  ///< the number of cells of the row in the later state

  bool operator==(const CellChange&) const = default;
};

/// The changes of one table.
struct TableChange {
  std::string id;
  std::int64_t rowsAdded = 0;
  std::int64_t rowsRemoved = 0;
  std::int64_t cellsChanged = 0;     ///< in rows of both states, cleared formulas excluded
  std::int64_t formulasCleared = 0;  ///< in rows of both states, formulas that became empty cells

  // The changes one by one, in plan order.
  std::vector<RowChange> added;
  std::vector<RowChange> removed;
  std::vector<CellChange> changed;
  std::vector<CellChange> cleared;

  bool Any() const noexcept { return rowsAdded + rowsRemoved + cellsChanged + formulasCleared > 0; }
};

/// Compares two states of a plan. Returns one entry per table of `before`, unchanged ones included, in its
/// order, then one per table that only `after` has. Blocks are matched by id (blocks that share an id by
/// their order), rows by `MatchRows`.
std::vector<TableChange> CompareTables(const PlanContent& before, const PlanContent& after);
std::vector<TableChange> CompareTables(const PlanFile& before, const PlanFile& after);

}  // namespace krnqb::plan_file
