#include "cli/import/change_report.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/console/text_table.h"
#include "cli/console/wrapped_names.h"
#include "plan_file/content.h"
#include "plan_file/headings.h"

namespace krnqb::cli {
namespace {

bool AnyRemoved(const std::vector<plan_file::TableChange>& tables) {
  return std::any_of(tables.begin(), tables.end(), [](const auto& table) { return table.rowsRemoved > 0; });
}

std::string CountTable(const std::vector<plan_file::TableChange>& tables) {
  const bool removals = AnyRemoved(tables);
  TextTable counts({Alignment::Left, Alignment::Right, Alignment::Right, Alignment::Right, Alignment::Right});
  std::vector<std::string> headings{"Plan table", "Rows added", "Cells changed", "Formulas cleared"};
  if (removals) headings.emplace_back("Rows removed");
  counts.AddRow(std::move(headings));
  for (const plan_file::TableChange& table : tables) {
    if (!table.Any()) continue;
    std::vector<std::string> row{plan_file::TableTitle(table.id), fmt::format("{}", table.rowsAdded),
                                 fmt::format("{}", table.cellsChanged),
                                 fmt::format("{}", table.formulasCleared)};
    if (removals) row.push_back(fmt::format("{}", table.rowsRemoved));
    counts.AddRow(std::move(row));
  }
  return counts.Text();
}

std::string NewRowNames(const plan_file::TableChange& table) {
  std::vector<std::string> names;
  for (const plan_file::RowChange& row : table.added) {
    if (!row.name.empty() && row.name != plan_file::emptyCellText) names.push_back(OneLine(row.name));
  }
  if (names.empty()) return {};
  return WrappedNames(fmt::format("  {}:", plan_file::TableTitle(table.id)), names);
}

}  // namespace

bool AnyChange(const std::vector<plan_file::TableChange>& tables) {
  return std::any_of(tables.begin(), tables.end(), [](const auto& table) { return table.Any(); });
}

std::string ChangeReport(const std::vector<plan_file::TableChange>& tables) {
  if (!AnyChange(tables)) return "Nothing in the plan changes.\n";
  std::string report = CountTable(tables);
  std::string names;
  for (const plan_file::TableChange& table : tables) names += NewRowNames(table);
  if (!names.empty()) report += "New rows, by name:\n" + names;
  const bool cleared =
      std::any_of(tables.begin(), tables.end(), [](const auto& table) { return table.formulasCleared > 0; });
  if (cleared) report += "The planning program computes the cleared formulas again.\n";
  return report;
}

}  // namespace krnqb::cli
