#pragma once

#include <map>
#include <string>
#include <tuple>
#include <vector>

#include "krnqb/booking.h"
#include "krnqb/keyed_collection.h"

namespace krnqb::fakes {

/// Keeps copies of everything that is passed to a receiver of bookings.
class RecordingBookings : public BookingReceiver {
 public:
  using Slot = std::tuple<AmountGroup, std::string, std::int16_t, std::int16_t>;  // the period is 0 if none

  struct Line {
    std::int64_t number;
    std::int32_t request;
    std::int16_t month;
    std::int16_t pastPeriod;
    std::string transactionId, lineId, date, referenceNumber, element, party, customer, account, accountName,
        item, itemName, amount, quantity;
  };

  struct Booked {
    Slot slot;
    BookingRule rule;
    double amount;
    bool replaces;
    std::string account, accountName, text;
    std::int64_t line;
    std::optional<double> quantity, averageCost;
    std::int64_t billedLine;
    bool billedAgain;
    std::int32_t request;
    std::string fromDate, toDate;
  };

  struct Cell {
    CellContent content;
    std::string table, block, row;
    std::int32_t rowNumber, column;
    std::int16_t number;
    std::string text;
    std::vector<std::pair<Slot, bool>> terms;  // whether it is subtracted
  };

  static Slot SlotOf(const AmountSlot& slot) {
    return {slot.group, FoldedKey(slot.name), slot.number, slot.pastPeriod.value_or(0)};
  }

  void ReadLine(const SourceLine& line) noexcept override {
    lines.push_back({line.number, line.request, line.month, line.pastPeriod.value_or(0),
                     std::string(line.transactionId), std::string(line.lineId), std::string(line.date),
                     std::string(line.referenceNumber), std::string(line.element), std::string(line.party),
                     std::string(line.customer), std::string(line.account), std::string(line.accountName),
                     std::string(line.item), std::string(line.itemName), std::string(line.amount),
                     std::string(line.quantity)});
  }

  void Book(const Booking& booking) noexcept override {
    bookings.push_back({SlotOf(booking.slot), booking.rule, booking.amount, booking.replaces,
                        std::string(booking.account), std::string(booking.accountName),
                        std::string(booking.text), booking.line == nullptr ? 0 : booking.line->number,
                        booking.quantity, booking.averageCost, booking.billedLine, booking.billedAgain,
                        booking.request, std::string(booking.fromDate), std::string(booking.toDate)});
    double& sum = sums[SlotOf(booking.slot)];
    sum = booking.replaces ? booking.amount : sum + booking.amount;
  }

  void WriteCell(const WrittenCell& cell) noexcept override {
    Cell& kept = cells.emplace_back(Cell{cell.content,
                                         std::string(cell.table),
                                         std::string(cell.block),
                                         std::string(cell.row),
                                         cell.rowNumber,
                                         cell.column,
                                         cell.number,
                                         std::string(cell.text),
                                         {}});
    for (const CellTerm& term : cell.terms) kept.terms.emplace_back(SlotOf(term.slot), term.subtracted);
  }

  /// Returns the sum of a cell's terms, added as doubles in their order.
  double AmountOf(const Cell& cell) const {
    double amount = 0;
    for (const auto& [slot, subtracted] : cell.terms) {
      const auto found = sums.find(slot);
      const double sum = found == sums.end() ? 0 : found->second;
      amount = subtracted ? amount - sum : amount + sum;
    }
    return amount;
  }

  std::vector<Line> lines;
  std::vector<Booked> bookings;
  std::vector<Cell> cells;
  std::map<Slot, double> sums;  // of the bookings, added as doubles in their order
};

}  // namespace krnqb::fakes
