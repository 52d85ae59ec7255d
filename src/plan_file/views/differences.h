#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "plan_file/attributes.h"
#include "plan_file/content.h"

namespace krnqb::plan_file {

/// A cell that differs between two states of a plan.
struct CellDifference {
  std::size_t column = 0;             ///< from 0, which is the name
  std::string heading;                ///< such as "Jan"; "Name" for the first cell
  std::optional<std::string> before;  ///< the cell's text; nullopt if its row was added
  std::optional<std::string> after;   ///< nullopt if its row was removed

  bool operator==(const CellDifference&) const = default;
};

/// A row with different cells, or one that only one state has.
struct RowDifference {
  enum class Kind : std::uint8_t { Changed, Added, Removed };

  Kind kind = Kind::Changed;
  std::string block;  ///< the title of its block
  std::string row;    ///< its name; of a nameless actual or annual growth row the planned row's, else "row 3"
  std::vector<CellDifference>
      cells;  ///< of an added or removed row those that are not empty, without the name

  bool operator==(const RowDifference&) const = default;
};

struct TableDifference {
  std::string id;
  std::string title;
  std::vector<RowDifference> rows;

  bool operator==(const TableDifference&) const = default;
};

/// Compares two states of a plan as `CompareTables` does, and names what differs as people see it. Returns
/// the tables with differences, in plan order. `start` is the plan's start, for the headings.
std::vector<TableDifference> NamedDifferences(const PlanContent& before, const PlanContent& after,
                                              std::optional<YearMonth> start);

}  // namespace krnqb::plan_file
