#include "ledger/listing.h"

#include <fmt/format.h>

#include <iterator>

namespace krnqb::ledger::testing {
namespace {

std::string Period(const std::optional<std::int16_t>& period) {
  return period ? fmt::format("past {}", *period) : std::string("own");
}

std::string BookingText(const LedgerBooking& booking, bool replaced) {
  return fmt::format("  {} {} {:a} {} {} line {} {} {} '{}' {:a} {:a} {} {} {} {} {}\n", booking.id,
                     BookingRuleWord(booking.rule), booking.amount, booking.replaces, replaced, booking.line,
                     booking.account, booking.accountName, booking.text, booking.quantity.value_or(-1),
                     booking.averageCost.value_or(-1), booking.billedLine, booking.billedAgain,
                     booking.request, booking.fromDate, booking.toDate);
}

}  // namespace

std::string Listing(const LedgerFile& ledger) {
  std::string text;
  const auto out = std::back_inserter(text);
  for (const LedgerCell& cell : ledger.Cells()) {
    fmt::format_to(out, "cell {} {} {} {} {} {} {} '{}'", CellContentWord(cell.content), cell.table,
                   cell.block, cell.row, cell.rowNumber, cell.column, cell.number, cell.text);
    for (const LedgerTerm& term : cell.terms)
      fmt::format_to(out, " {}{}", term.subtracted ? '-' : '+', term.slot);
    text += '\n';
  }
  for (const LedgerSlot& slot : ledger.Slots()) {
    fmt::format_to(out, "sum {} {} {} {} {} {:a}\n", slot.id, static_cast<int>(slot.group), slot.name,
                   slot.number, Period(slot.pastPeriod), ledger.SumOf(slot.id));
    ledger.ForEachBooking(slot.id, [&](const LedgerBooking& booking, bool replaced) {
      text += BookingText(booking, replaced);
    });
  }
  for (std::int64_t number = 1; number <= ledger.LineCount(); ++number) {
    const LedgerLine line = ledger.Line(number);
    const LedgerDocument document = ledger.Document(line.document);
    fmt::format_to(out, "line {} {} {} {} {} {} {} {} {} {} {} {} {} {} {} '{}' '{}'\n", number,
                   document.request, Period(document.pastPeriod), document.transactionId, document.date,
                   document.number, document.party, line.month, line.lineId, line.element, line.customer,
                   line.account, line.accountName, line.item, line.itemName, line.amount, line.quantity);
    for (const LedgerOmission& omission : ledger.OmissionsOf(line)) {
      fmt::format_to(out, "  left out {} {} {} {} {}\n", static_cast<int>(omission.reason),
                     static_cast<int>(omission.kind), omission.account, omission.accountName,
                     omission.amount);
    }
  }
  return text;
}

}  // namespace krnqb::ledger::testing
