#include "ledger/figures.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "krnqb/keyed_collection.h"
#include "support/number_text.h"

namespace krnqb::ledger {
namespace {

using RowPlace = std::tuple<std::string, std::string, std::int32_t>;  // table, block, row

RowPlace PlaceOf(const LedgerCell& cell) {
  return {cell.table, cell.block, cell.rowNumber};
}

// The group of the accounts in past performance's figures of this type; nullopt for a balance.
std::optional<AmountGroup> GroupOfType(std::string_view type) {
  const std::string folded = FoldedKey(type);
  if (folded == "income") return AmountGroup::Income;
  if (folded == "expense") return AmountGroup::Expenses;
  if (folded == "costofgoodssold") return AmountGroup::CostOfGoods;
  return std::nullopt;
}

bool Has(const LedgerCell& cell, std::int64_t slot) {
  return std::ranges::any_of(cell.terms, [&](const LedgerTerm& term) { return term.slot == slot; });
}

// The figure of past performance that takes a sum of an account's month, if there is one.
std::optional<std::int64_t> TotalOf(const LedgerFile& ledger, const LedgerSlot& month) {
  for (const LedgerSlot& total : ledger.Slots()) {
    if (total.group != AmountGroup::PastPerformance || total.number != month.pastPeriod) continue;
    if (GroupOfType(total.name) != month.group) continue;
    bool taken = false;
    ledger.ForEachBooking(total.id, [&](const LedgerBooking& booking, bool replaced) {
      taken = taken || (!replaced && booking.rule == BookingRule::PeriodTotal &&
                        FoldedKey(booking.accountName) == FoldedKey(month.name));
    });
    if (taken) return total.id;
  }
  return std::nullopt;
}

Figure& FigureIn(RowFigures& row, const LedgerCell& cell) {
  const auto found = std::ranges::find_if(row.figures, [&](const Figure& figure) {
    return figure.number == cell.number && figure.terms == cell.terms;
  });
  if (found != row.figures.end()) return *found;
  return row.figures.emplace_back(Figure{.past = cell.content == CellContent::PastFigure,
                                         .number = cell.number,
                                         .cells = {},
                                         .terms = cell.terms});
}

}  // namespace

std::vector<RowFigures> FiguresOf(const LedgerFile& ledger, const std::vector<LedgerCell>& cells,
                                  const FigureFilter& accepts) {
  // A growth rate has no terms; it belongs to the months of its row.
  std::map<RowPlace, std::optional<AmountGroup>> groups;
  for (const LedgerCell& cell : cells) {
    if (!cell.terms.empty()) groups.try_emplace(PlaceOf(cell), ledger.Slot(cell.terms.front().slot).group);
  }
  using RowKey = std::tuple<std::string, std::optional<AmountGroup>, std::string>;
  std::map<RowKey, std::size_t> places;
  std::vector<RowFigures> rows;
  for (const LedgerCell& cell : cells) {
    const auto group = groups.find(PlaceOf(cell));
    const bool grouped = group != groups.end();
    const bool past = cell.content == CellContent::PastFigure;
    RowKey key{FoldedKey(cell.row), grouped ? group->second : std::nullopt,
               grouped && !past ? std::string() : cell.block};
    const auto [place, isNew] = places.try_emplace(std::move(key), rows.size());
    if (isNew) rows.push_back({.name = cell.row, .figures = {}, .rates = {}});
    RowFigures& row = rows[place->second];
    if (cell.content == CellContent::GrowthRate) {
      row.rates.push_back(cell);
    } else {
      FigureIn(row, cell).cells.push_back(cell);
    }
  }
  for (RowFigures& row : rows) {
    if (accepts) std::erase_if(row.figures, [&](const Figure& figure) { return !accepts(figure); });
    std::ranges::stable_sort(row.figures, {}, &Figure::number);
    for (Figure& figure : row.figures) figure.amount = ledger.AmountOf(figure.cells.front());
  }
  return rows;
}

bool ShowsAmount(const LedgerCell& cell, double amount) {
  switch (cell.content) {
    case CellContent::GrowthRate:
      return true;
    case CellContent::GrowthFormula: {
      const std::string formula = '=' + GeneralNumberText(amount);
      return cell.text.starts_with(formula + "* (1 + B") || cell.text.starts_with(formula + " * (1 + B");
    }
    case CellContent::Amount:
      return cell.text == GeneralNumberText(amount);
    case CellContent::PastFigure:
      break;
  }
  return cell.text == PlainNumberText(amount);
}

std::vector<LedgerSlot> MonthsOf(const LedgerFile& ledger, const LedgerSlot& total,
                                 const LedgerBooking& booking) {
  const std::optional<AmountGroup> group = GroupOfType(total.name);
  if (booking.rule != BookingRule::PeriodTotal || !group) return {};
  return ledger.PastMonths(*group, total.number, booking.accountName);
}

std::vector<LedgerCell> CellsOf(const LedgerFile& ledger, const LedgerSlot& slot) {
  std::vector<LedgerCell> cells;
  const std::optional<std::int64_t> shown = slot.pastPeriod ? TotalOf(ledger, slot) : slot.id;
  if (!shown) return cells;
  std::ranges::copy_if(ledger.Cells(), std::back_inserter(cells),
                       [&](const LedgerCell& cell) { return Has(cell, *shown); });
  return cells;
}

}  // namespace krnqb::ledger
