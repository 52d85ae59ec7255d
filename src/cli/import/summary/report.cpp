#include "cli/import/summary/report.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/console/text_table.h"
#include "cli/console/wrapped_names.h"
#include "cli/import/summary/year_table.h"
#include "plan_file/headings.h"
#include "plan_file/views/split_table.h"
#include "support/money_text.h"

namespace krnqb::cli {
namespace {

using plan_file::TableLayout;
using plan_file::TableLine;

// Adding a row clears the formulas of its table. An import of planned amounts writes growth formulas again.
std::string ClearedGrowth(const ImportSummary& summary, std::size_t width) {
  const QBKRN_BalancesImport balances = summary.scope.balances;
  const bool writtenAgain = balances == BalImport_Planned || balances == BalImport_All;
  if (summary.growthCleared == 0 || writtenAgain) return {};
  return WrappedNames(
      fmt::format("Growth formulas cleared because rows were added: {};", summary.growthCleared),
      {"import planned amounts to write them again"}, width);
}

std::string Figures(const ImportSummary& summary, std::size_t width) {
  const SummaryScope& scope = summary.scope;
  std::string text;
  if (summary.planned) {
    text +=
        YearTable({"Planned amounts with growth", scope.planStart}, *summary.planned, scope.planStart, width);
  }
  text += ClearedGrowth(summary, width);
  if (summary.actual) {
    if (!text.empty()) text += '\n';
    text += YearTable({"Actual amounts", scope.importStart}, *summary.actual, scope.planStart, width);
  }
  return text;
}

bool AnyAdded(const ImportSummary& summary) {
  return std::any_of(summary.added.begin(), summary.added.end(),
                     [](const std::vector<AddedRow>& rows) { return !rows.empty(); });
}

std::string SumText(const std::optional<double>& sum) {
  return sum ? MoneyText(*sum) : std::string("-");
}

std::string AddedRowsWithSums(const ImportSummary& summary, std::size_t width) {
  const bool planned = summary.scope.balances != BalImport_Actual;
  const bool actual = summary.scope.balances != BalImport_Planned;
  std::vector<TableLine> lines{{{""}, true}};
  if (planned) lines.back().texts.emplace_back("Planned");
  if (actual) lines.back().texts.emplace_back("Actual");
  for (const plan_file::FigureGroup group : plan_file::figureGroups) {
    const std::vector<AddedRow>& rows = summary.added[static_cast<std::size_t>(group)];
    if (!rows.empty()) lines.push_back({{std::string(plan_file::GroupTitle(group))}, true});
    for (const AddedRow& row : rows) {
      TableLine& line = lines.emplace_back(TableLine{{"  " + OneLine(row.name)}});
      if (planned) line.texts.push_back(SumText(row.planned));
      if (actual) line.texts.push_back(SumText(row.actual));
    }
  }
  return "Rows added, with the sum of the year:\n" +
         plan_file::SplitTableText(lines, TableLayout{.width = width, .indent = ""});
}

std::string AddedRowNames(const ImportSummary& summary, std::size_t width) {
  std::string text = "Rows added (no amounts were imported):\n";
  for (const plan_file::FigureGroup group : plan_file::figureGroups) {
    std::vector<std::string> names;
    for (const AddedRow& row : summary.added[static_cast<std::size_t>(group)]) {
      names.push_back(OneLine(row.name));
    }
    if (!names.empty())
      text += WrappedNames(fmt::format("  {}:", plan_file::GroupTitle(group)), names, width);
  }
  return text;
}

std::string AddedRows(const ImportSummary& summary, std::size_t width) {
  if (!AnyAdded(summary)) return {};
  return summary.scope.balances == BalImport_None ? AddedRowNames(summary, width)
                                                  : AddedRowsWithSums(summary, width);
}

std::optional<double> AmountOf(const PastRow& row, std::size_t period) {
  return period < row.amounts.size() ? row.amounts[period] : std::nullopt;
}

bool IsZeroThroughout(const std::vector<PastRow>& rows, std::size_t period) {
  return std::all_of(rows.begin(), rows.end(),
                     [&](const PastRow& row) { return AmountOf(row, period) == 0; });
}

std::string PastPerformance(const ImportSummary& summary, std::size_t width) {
  if (!summary.pastPerformanceImported) return {};
  if (summary.pastRows.empty()) return "Past performance: no figure changes.\n";
  const std::vector<std::string>& headings = summary.pastRows.front().headings;
  std::vector<TableLine> lines{{{""}, true}};
  for (const PastRow& row : summary.pastRows) lines.push_back({{"  " + OneLine(row.name)}});
  std::vector<std::string> zeroPeriods;
  for (std::size_t period = 0; period < headings.size(); ++period) {
    if (IsZeroThroughout(summary.pastRows, period)) {
      zeroPeriods.push_back(headings[period]);
      continue;
    }
    lines.front().texts.push_back(headings[period]);
    for (std::size_t row = 0; row < summary.pastRows.size(); ++row) {
      lines[row + 1].texts.push_back(SumText(AmountOf(summary.pastRows[row], period)));
    }
  }
  std::string text = "Past performance, rows that change:\n" +
                     plan_file::SplitTableText(lines, TableLayout{.width = width, .indent = ""});
  if (!zeroPeriods.empty()) text += WrappedNames("  0.00 in every row:", zeroPeriods, width);
  return text;
}

std::string Counted(std::int64_t count, std::string_view singular, std::string_view plural) {
  return fmt::format("{} {}", count, count == 1 ? singular : plural);
}

std::string Counts(const std::vector<plan_file::TableChange>& tables, std::size_t width) {
  plan_file::TableChange all;
  std::int64_t changedTables = 0;
  for (const plan_file::TableChange& table : tables) {
    if (table.Any()) ++changedTables;
    all.rowsAdded += table.rowsAdded;
    all.rowsRemoved += table.rowsRemoved;
    all.cellsChanged += table.cellsChanged;
    all.formulasCleared += table.formulasCleared;
  }
  std::vector<std::string> changes;
  if (all.rowsAdded > 0) changes.push_back(Counted(all.rowsAdded, "row", "rows") + " added");
  if (all.rowsRemoved > 0) changes.push_back(Counted(all.rowsRemoved, "row", "rows") + " removed");
  const std::string_view besides = changes.empty() ? "" : "other ";
  if (all.cellsChanged > 0) {
    changes.push_back(
        fmt::format("{} {}{} changed", all.cellsChanged, besides, all.cellsChanged == 1 ? "cell" : "cells"));
  }
  if (all.formulasCleared > 0) {
    changes.push_back(Counted(all.formulasCleared, "formula", "formulas") + " cleared");
  }
  changes.back() += '.';
  std::string text = WrappedNames(Counted(changedTables, "table changes:", "tables change:"), changes, width);
  if (all.formulasCleared > 0) text += "The planning program computes the cleared formulas again.\n";
  return text;
}

}  // namespace

bool AnyChange(const std::vector<plan_file::TableChange>& tables) {
  return std::any_of(tables.begin(), tables.end(), [](const auto& table) { return table.Any(); });
}

std::string ChangeReport(const ImportSummary& summary, const std::vector<plan_file::TableChange>& tables,
                         std::size_t width) {
  std::string report;
  const std::string ending = AnyChange(tables) ? Counts(tables, width) : "Nothing in the plan changes.\n";
  for (const std::string& part :
       {Figures(summary, width), AddedRows(summary, width), PastPerformance(summary, width), ending}) {
    if (!report.empty() && !part.empty()) report += '\n';
    report += part;
  }
  return report;
}

}  // namespace krnqb::cli
