#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "ledger/file.h"

namespace krnqb::ledger {

/// One amount of a row: the cells that show it and the sums it is made of. A planned and an actual cell of
/// one month show the same figure.
struct Figure {
  bool past = false;        ///< a period of past performance, otherwise a month
  std::int16_t number = 1;  ///< the month, 1 to 12 of the imported year, or the period, 1 to 14
  std::vector<LedgerCell> cells;
  std::vector<LedgerTerm> terms;
  double amount = 0;
};

/// The figures of the rows with one name that show the same sums, in the order of their months or periods.
struct RowFigures {
  std::string name;  ///< as in the plan
  std::vector<Figure> figures;
  std::vector<LedgerCell> rates;  ///< the cells with its growth rates
};

/// Returns whether a figure is needed. Its amount is not known yet.
using FigureFilter = std::function<bool(const Figure& figure)>;

/// Returns the rows that were written, in the order in which they were first written, with the figures that
/// the filter accepts, or all. Only their amounts are added up.
std::vector<RowFigures> FiguresOf(const LedgerFile& ledger, const std::vector<LedgerCell>& cells,
                                  const FigureFilter& accepts = {});

/// Returns whether a cell's text contains the amount as the import formats it; true for a growth rate.
bool ShowsAmount(const LedgerCell& cell, double amount);

/// Returns the sums of the account's months that a booking of the rule `PeriodTotal` adds up. `total` is the
/// sum that it is booked to.
std::vector<LedgerSlot> MonthsOf(const LedgerFile& ledger, const LedgerSlot& total,
                                 const LedgerBooking& booking);

/// Returns the cells that show a sum: of an account's month for past performance, those that show the figure
/// of the period.
std::vector<LedgerCell> CellsOf(const LedgerFile& ledger, const LedgerSlot& slot);

}  // namespace krnqb::ledger
