#include "cli/report/figures.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/report/amounts.h"
#include "html/chart.h"
#include "html/elements.h"
#include "html/table.h"
#include "plan_file/headings.h"

namespace krnqb::cli {
namespace {

using plan_file::FigureGroup;
using plan_file::YearAmounts;

// What a table of a year is called, and its name for programs.
struct YearTitle {
  std::string title;
  std::string name;
  YearMonth start;
};

std::vector<std::optional<double>> Points(const YearAmounts& year) {
  return {year.months.begin(), year.months.end()};
}

html::Fragment ChartOf(const FiguresChange& figures, const YearTitle& title) {
  html::Chart chart{.title = fmt::format("{} after the import, and the result", title.title),
                    .description = "The table below has the same amounts.",
                    .labels = MonthHeadings(title.start),
                    .series = {}};
  for (const FigureGroup group : plan_file::figureGroups) {
    const auto index = static_cast<std::size_t>(group);
    if (const auto& amounts = figures.after.groups[index]) {
      chart.series.push_back({.name = std::string(plan_file::GroupTitle(group)),
                              .kind = html::SeriesKind::Bars,
                              .colour = index,
                              .amounts = Points(amounts->amounts)});
    }
  }
  constexpr std::size_t resultColour = 3;
  chart.series.push_back({.name = "Result",
                          .kind = html::SeriesKind::Line,
                          .colour = resultColour,
                          .amounts = Points(figures.after.Result())});
  if (figures.Any()) {
    chart.series.push_back({.name = "Result before the import",
                            .kind = html::SeriesKind::DashedLine,
                            .colour = resultColour,
                            .amounts = Points(figures.before.Result())});
  }
  return html::ChartImage(chart);
}

class YearTable {
 public:
  explicit YearTable(const YearTitle& title)
      : table_{.caption = fmt::format("{}, {}", title.title, plan_file::TwelveMonthsText(title.start)),
               .columns = YearColumns("", title.start),
               .rows = {},
               .name = title.name} {
    table_.columns.front().heading = "Figure";
  }

  void Add(std::string_view figure, const std::optional<YearAmounts>& before,
           const std::optional<YearAmounts>& after, html::RowKind kind) {
    const auto add = [&](const std::string& name, const std::optional<YearAmounts>& amounts) {
      if (!amounts) return;
      table_.rows.push_back(
          {.heading = {html::Text(name)}, .cells = YearCells(*amounts), .kind = kind, .name = name});
    };
    if (before == after) {
      add(fmt::format("{}, unchanged", figure), after);
    } else {
      add(fmt::format("{} before", figure), before);
      add(fmt::format("{} after", figure), after);
    }
  }

  html::Fragment Region() const { return html::TableRegion(table_); }

 private:
  html::Table table_;
};

std::optional<YearAmounts> AmountsOf(const plan_file::PlanFigures& figures, FigureGroup group) {
  const auto& found = figures.groups[static_cast<std::size_t>(group)];
  return found ? std::optional(found->amounts) : std::nullopt;
}

html::Fragment UnreadRows(const plan_file::PlanFigures& figures) {
  std::vector<html::Fragment> names;
  for (const auto& group : figures.groups) {
    if (!group) continue;
    for (const std::string& name : group->unreadRows) names.push_back(html::Name(name));
  }
  if (names.empty()) return {};
  return html::Paragraph(
             "These rows have texts or formulas of other kinds in some months, which the figures lack:") +
         html::List(names);
}

html::Fragment Year(const FiguresChange& figures, const YearTitle& title) {
  YearTable table(title);
  for (const FigureGroup group : plan_file::figureGroups) {
    table.Add(plan_file::GroupTitle(group), AmountsOf(figures.before, group), AmountsOf(figures.after, group),
              html::RowKind::Plain);
  }
  table.Add("Result", figures.before.Result(), figures.after.Result(), html::RowKind::Total);
  return html::Heading(3, title.title) + ChartOf(figures, title) + table.Region() + UnreadRows(figures.after);
}

}  // namespace

html::Fragment BeforeAndAfter(const ImportSummary& summary) {
  html::Fragment content;
  if (summary.planned) {
    content += Year(*summary.planned, {"Planned amounts with growth", "planned", summary.scope.planStart});
  }
  if (summary.actual) {
    content += Year(*summary.actual, {"Actual amounts", "actual", summary.scope.importStart});
  }
  if (summary.growthCleared > 0) {
    content += html::Paragraph(
        fmt::format("{} cleared because rows were added.",
                    Counted(summary.growthCleared, "growth formula was", "growth formulas were")));
  }
  return content;
}

html::Fragment AddedRows(const ImportSummary& summary) {
  html::Table table{.caption = "Rows added, with the sums of their year",
                    .columns = {{"Row", html::Alignment::Text}, {"Planned"}, {"Actual"}},
                    .rows = {},
                    .name = "added"};
  for (const FigureGroup group : plan_file::figureGroups) {
    const std::vector<AddedRow>& rows = summary.added[static_cast<std::size_t>(group)];
    if (rows.empty()) continue;
    const std::string_view title = plan_file::GroupTitle(group);
    table.rows.push_back({.heading = {html::Text(title)}, .cells = {}, .kind = html::RowKind::Heading});
    for (const AddedRow& row : rows) {
      table.rows.push_back({.heading = {html::Name(row.name)},
                            .cells = {AmountCell(row.planned), AmountCell(row.actual)},
                            .name = fmt::format("{}: {}", title, row.name)});
    }
  }
  return html::TableRegion(table);
}

html::Fragment PastPerformance(const ImportSummary& summary) {
  if (!summary.pastPerformanceImported) return {};
  if (summary.pastRows.empty()) return html::Paragraph("No figure changes.");
  html::Table table{.caption = "Past performance, rows that change",
                    .columns = {{"Figure", html::Alignment::Text}},
                    .rows = {},
                    .name = "past"};
  for (const std::string& heading : summary.pastRows.front().headings) table.columns.push_back({heading});
  for (const PastRow& past : summary.pastRows) {
    html::Row row{.heading = {html::Name(past.name)}, .cells = {}, .name = past.name};
    for (const std::optional<double>& amount : past.amounts) row.cells.push_back(AmountCell(amount));
    table.rows.push_back(std::move(row));
  }
  return html::TableRegion(table);
}

}  // namespace krnqb::cli
