#include "cli/console/changes_json.h"

#include "plan_file/headings.h"

namespace krnqb::cli {
namespace {

constexpr const char* nameHeading = "Name";

// The headings of all cells of a row; empty if the row has no known layout.
Json HeadingsJson(const plan_file::RowChange& change, std::optional<YearMonth> start) {
  const std::vector<std::string> headings =
      plan_file::ColumnHeadings(change.block, change.cells.size(), start);
  Json json = Json::array();
  if (headings.empty()) return json;
  json.push_back(nameHeading);
  for (const std::string& heading : headings) json.push_back(heading);
  return json;
}

Json RowJson(const plan_file::RowChange& change, std::optional<YearMonth> start) {
  return {{"block", change.block},
          {"row", change.row},
          {"name", change.name},
          {"headings", HeadingsJson(change, start)},
          {"cells", change.cells}};
}

Json HeadingJson(const plan_file::CellChange& change, std::optional<YearMonth> start) {
  if (change.column == 0) return nameHeading;
  const std::vector<std::string> headings = plan_file::ColumnHeadings(change.block, change.width, start);
  return change.column <= headings.size() ? Json(headings[change.column - 1]) : Json();
}

Json CellJson(const plan_file::CellChange& change, std::optional<YearMonth> start) {
  return {{"block", change.block},
          {"row", change.row},
          {"name", change.name},
          {"column", change.column},
          {"heading", HeadingJson(change, start)},
          {"before", change.before},
          {"after", change.after}};
}

Json RowsJson(const std::vector<plan_file::RowChange>& changes, std::optional<YearMonth> start) {
  Json rows = Json::array();
  for (const plan_file::RowChange& change : changes) rows.push_back(RowJson(change, start));
  return rows;
}

Json CellsJson(const std::vector<plan_file::CellChange>& changes, std::optional<YearMonth> start) {
  Json cells = Json::array();
  for (const plan_file::CellChange& change : changes) cells.push_back(CellJson(change, start));
  return cells;
}

}  // namespace

Json ChangesJson(const std::vector<plan_file::TableChange>& tables, std::optional<YearMonth> start) {
  Json changes = Json::array();
  for (const plan_file::TableChange& table : tables) {
    if (!table.Any()) continue;
    changes.push_back({{"id", table.id},
                       {"title", plan_file::TableTitle(table.id)},
                       {"added", RowsJson(table.added, start)},
                       {"removed", RowsJson(table.removed, start)},
                       {"changed", CellsJson(table.changed, start)},
                       {"cleared", CellsJson(table.cleared, start)}});
  }
  return changes;
}

}  // namespace krnqb::cli
