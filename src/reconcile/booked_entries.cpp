#include "reconcile/booked_entries.h"

#include "krnqb/keyed_collection.h"
#include "support/error_handling.h"
#include "support/number_text.h"

namespace krnqb::reconcile {

bool ImportedRow::IsAccountRow() const {
  return accounts.size() == 1 && FoldedKey(accounts.front()) == FoldedKey(name);
}

void BookedEntries::ReadLine(const SourceLine& line) noexcept {
  inPastPeriod_ = line.pastPeriod.has_value();
  if (inPastPeriod_ || failure_) return;
  try {
    transaction_ = table_.transactions.NumberOf(line.transactionId);
    key_ = keys_.NumberOf(transaction_, line.lineId);
    costCut_ = false;
    if (lines_.size() <= key_) lines_.resize(key_ + std::size_t{1});
    lines_[key_].isRead = true;
  } catch (...) {
    failure_ = CaughtError();
  }
}

void BookedEntries::Book(const Booking& booking) noexcept {
  const std::optional<Group> group = GroupOfSums(booking.slot.group);
  if (!group || booking.slot.pastPeriod || failure_) return;
  try {
    const auto line = static_cast<std::uint32_t>(table_.LineOf(*group, booking.slot.name));
    const auto month = static_cast<std::uint8_t>(booking.slot.number - 1);
    MonthAmounts& amounts = table_.At(line).months.at(month);
    if (booking.line != nullptr) {
      BookLine(booking, amounts, {.line = line, .month = month});
    } else if (booking.rule == BookingRule::ReportCell) {
      BookReportCell(booking, amounts, line);
    } else {
      const ExactAmount spread = ExactAmount::From(booking.amount);
      amounts.Explain(CauseCode::SpreadBalance, spread - amounts.booked);
      amounts.booked = spread;
    }
  } catch (...) {
    failure_ = CaughtError();
  }
}

void BookedEntries::BookLine(const Booking& booking, MonthAmounts& month, BookedEntry entry) {
  entry.key = key_;
  entry.transaction = transaction_;
  entry.rule = booking.rule;
  entry.billedAgain = booking.billedAgain;
  if (booking.rule == BookingRule::CostOfSale) {
    const std::string_view quantity = booking.line->quantity;
    entry.quantityAsOne = !quantity.empty() && !ConvertToDouble(quantity);
  }
  entry.costCut = costCut_;
  entry.amount = ExactAmount::From(booking.amount);
  entries_.push_back(entry);
  month.booked += entry.amount;
}

void BookedEntries::BookReportCell(const Booking& booking, MonthAmounts& month, std::uint32_t line) {
  fromReports_ = true;
  ReportCell cell{.amount = ExactAmount::From(booking.amount), .cut = {}};
  if (const std::optional<double> whole = ConvertToDouble(booking.text); whole && !ReadsWhole(booking.text)) {
    cell.cut = cell.amount - ExactAmount::From(*whole);
  }
  month.booked += cell.amount;
  month.Explain(CauseCode::TextCut, cell.cut);
  const std::uint64_t place =
      std::uint64_t{line} * monthsOfAYear + static_cast<std::uint64_t>(booking.slot.number);
  const auto [last, first] = reportCells_.try_emplace(place, cell);
  if (first) return;
  // The last row of an account is its subtotal, which includes the others.
  month.Explain(CauseCode::TextCut, -last->second.cut);
  month.Explain(CauseCode::ReportRowTwice, last->second.amount);
  last->second = cell;
}

// The formulas of one month name every row once.
void BookedEntries::WriteCell(const WrittenCell& cell) noexcept {
  if (cell.content != CellContent::GrowthFormula || cell.number != 1 || cell.terms.empty() || failure_)
    return;
  const std::optional<Group> group = GroupOfSums(cell.terms.front().slot.group);
  if (!group) return;
  try {
    ImportedRow row{.group = *group, .name = std::string(cell.row), .accounts = {}};
    for (const CellTerm& term : cell.terms) row.accounts.emplace_back(term.slot.name);
    rows_.push_back(std::move(row));
  } catch (...) {
    failure_ = CaughtError();
  }
}

void BookedEntries::LeftOut(const Skipped& skipped) noexcept {
  if (skipped.line == 0 || inPastPeriod_ || failure_) return;
  std::optional<SkipReason>& reason = lines_[key_].reason;
  if (!reason) reason = skipped.reason;
}

void BookedEntries::RequireComplete() const {
  if (failure_) throw Error(*failure_);
}

}  // namespace krnqb::reconcile
