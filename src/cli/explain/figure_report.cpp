#include "cli/explain/figure_report.h"

#include <fmt/format.h>

#include <cmath>
#include <iterator>

#include "cli/console/text_table.h"
#include "cli/explain/line_table.h"
#include "cli/explain/story.h"
#include "cli/explain/words.h"
#include "support/money_text.h"

namespace krnqb::cli {
namespace {

constexpr std::size_t monthsPerYear = 12;

std::string CellTexts(const ledger::Figure& figure, std::size_t width) {
  std::vector<std::string> cells;
  cells.reserve(figure.cells.size());
  for (const ledger::LedgerCell& cell : figure.cells) {
    cells.push_back(fmt::format("{} row {}: {}", PlaceText(cell), cell.rowNumber, cell.text));
  }
  return HangingNames("  ", "in ", cells, width);
}

// "Income - CostOfGoodsSold", if a figure is not just one sum.
std::string TermText(const std::vector<SumStory>& stories) {
  if (stories.size() < 2) return {};
  std::string text;
  for (const SumStory& story : stories) {
    const std::string_view sign = story.subtracted ? " - " : text.empty() ? " = " : " + ";
    text += fmt::format("{}{} {}", sign, OneLine(story.slot.name), MoneyText(story.sum));
  }
  return text;
}

std::string AccountMonths(const SumStory& story, std::size_t width) {
  std::string text;
  for (const StoryLine& line : story.lines) {
    for (const SumStory& month : line.months) {
      text += fmt::format("  {}, month {} of the period: {}\n", OneLine(month.slot.name), month.slot.number,
                          MoneyText(month.sum));
      text += LineTable(month, width, "    ");
    }
  }
  return text;
}

std::string FigureText(const ledger::LedgerFile& ledger, const ledger::RowFigures& row,
                       const ledger::Figure& figure, std::size_t width) {
  const std::vector<SumStory> stories = StoryOf(ledger, figure);
  std::string text =
      fmt::format("{}, {}: {}{}\n", OneLine(row.name), PeriodText(ledger.Facts(), figure.past, figure.number),
                  MoneyText(figure.amount), TermText(stories));
  text += CellTexts(figure, width);
  bool anyLine = false;
  for (const SumStory& story : stories) {
    if (stories.size() > 1 && !story.lines.empty()) {
      text += fmt::format("  {}{}:\n", story.subtracted ? "less " : "", OneLine(story.slot.name));
    }
    text += LineTable(story, width, "  ");
    text += AccountMonths(story, width);
    anyLine = anyLine || !story.lines.empty();
  }
  if (!anyLine) text += "  Nothing was booked.\n";
  return text;
}

std::string RateText(const ledger::RowFigures& row) {
  std::string text;
  for (const ledger::LedgerCell& cell : row.rates) {
    text += fmt::format("Growth rate, {} row {}: {}\n", PlaceText(cell), cell.rowNumber, OneLine(cell.text));
  }
  return text;
}

std::string YearText(const ledger::RowFigures& row) {
  if (row.figures.size() != monthsPerYear || row.figures.front().past) return {};
  double sum = 0;
  for (const ledger::Figure& figure : row.figures) sum += figure.amount;
  return fmt::format("{}, the year: {}\n", OneLine(row.name),
                     std::isfinite(sum) ? MoneyText(sum) : std::string("out of range"));
}

}  // namespace

std::string FigureReport(const ledger::LedgerFile& ledger, const ledger::RowFigures& row, std::size_t width) {
  std::string text;
  for (const ledger::Figure& figure : row.figures) {
    if (!text.empty()) text += '\n';
    text += FigureText(ledger, row, figure, width);
  }
  const std::string ending = RateText(row) + YearText(row);
  return ending.empty() ? text : text + '\n' + ending;
}

}  // namespace krnqb::cli
