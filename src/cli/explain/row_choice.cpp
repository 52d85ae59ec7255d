#include "cli/explain/row_choice.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/console/nearest_names.h"
#include "cli/explain/words.h"
#include "krnqb/keyed_collection.h"
#include "plan_file/headings.h"

namespace krnqb::cli {
namespace {

using ledger::LedgerCell;

Failure NotFound(const std::string& why, const std::string& remedy) {
  return CommandFailure("explaining the figure failed", why, remedy);
}

void AddNew(std::vector<std::string>& names, const std::string& name) {
  if (std::ranges::find(names, name) == names.end()) names.push_back(name);
}

Failure NoSuchTable(const ExplainOptions& options, const std::vector<LedgerCell>& cells) {
  std::vector<std::string> titles;
  for (const LedgerCell& cell : cells) AddNew(titles, PlaceText(cell));
  const std::vector<std::string> nearest = NearestNames(options.table.value_or(""), titles);
  return NotFound(
      fmt::format("{} has no figures of a table \"{}\"", options.ledger, options.table.value_or("")),
      nearest.empty() ? fmt::format("its tables are \"{}\"", fmt::join(titles, "\", \""))
                      : fmt::format("did you mean {}?", AlternativesText(nearest)));
}

std::vector<LedgerCell> CellsInTable(const std::vector<LedgerCell>& cells, const ExplainOptions& options) {
  if (!options.table) return cells;
  const std::string folded = FoldedKey(options.table.value_or(""));
  std::vector<LedgerCell> chosen;
  std::ranges::copy_if(cells, std::back_inserter(chosen), [&](const LedgerCell& cell) {
    return FoldedKey(cell.table) == folded || FoldedKey(PlaceText(cell)) == folded;
  });
  if (chosen.empty()) throw NoSuchTable(options, cells);
  return chosen;
}

Failure NoSuchRow(const ExplainOptions& options, const std::vector<LedgerCell>& cells) {
  std::vector<std::string> names;
  for (const LedgerCell& cell : cells) AddNew(names, cell.row);
  const std::vector<std::string> nearest = NearestNames(options.row.value_or(""), names);
  return NotFound(fmt::format("the import wrote no figures into a row \"{}\"", options.row.value_or("")),
                  nearest.empty()
                      ? "give a row to which the import brought amounts; krnqb plan show lists the rows"
                      : fmt::format("did you mean {}?", AlternativesText(nearest)));
}

// Returns the rows that have a figure of the month, with such figures alone.
std::vector<ledger::RowFigures> RowsOfMonth(const ledger::LedgerFile& ledger,
                                            const std::vector<LedgerCell>& cells, const YearMonth& month,
                                            const ExplainOptions& options) {
  const ledger::LedgerFacts& facts = ledger.Facts();
  std::vector<ledger::RowFigures> rows = FiguresOf(ledger, cells, [&](const ledger::Figure& figure) {
    return MonthOfFigure(facts, figure.past, figure.number) == month;
  });
  std::erase_if(rows, [](const ledger::RowFigures& row) { return row.figures.empty(); });
  if (!rows.empty()) return rows;
  throw NotFound(fmt::format("the import wrote no figure of {} into the row \"{}\"",
                             plan_file::MonthOfYear(month), options.row.value_or("")),
                 fmt::format("its amounts are those of {} to {}; leave out --month to see them all",
                             facts.periodFrom, facts.periodTo));
}

}  // namespace

std::vector<ledger::RowFigures> ChosenRows(const ledger::LedgerFile& ledger, const ExplainOptions& options) {
  if (ledger.Cells().empty()) {
    throw NotFound(fmt::format("the import of {} wrote no figures", options.ledger),
                   "run an import with --balances planned, actual or all");
  }
  const std::vector<LedgerCell> cells = CellsInTable(ledger.Cells(), options);
  const std::string folded = FoldedKey(options.row.value_or(""));
  std::vector<LedgerCell> named;
  std::ranges::copy_if(cells, std::back_inserter(named),
                       [&](const LedgerCell& cell) { return FoldedKey(cell.row) == folded; });
  if (named.empty()) throw NoSuchRow(options, cells);
  return options.month ? RowsOfMonth(ledger, named, *options.month, options) : FiguresOf(ledger, named);
}

}  // namespace krnqb::cli
