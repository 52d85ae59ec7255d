#include "cli/explain/transaction_report.h"

#include <fmt/format.h>

#include "cli/console/failure.h"
#include "cli/console/nearest_names.h"
#include "cli/console/text_table.h"
#include "cli/explain/words.h"
#include "cli/import/notices/skipped_amounts.h"
#include "krnqb/keyed_collection.h"
#include "support/money_text.h"
#include "support/number_text.h"

namespace krnqb::cli {
namespace {

using ledger::LedgerFile;

Failure NoSuchTransaction(const LedgerFile& ledger, const std::string& transactionId) {
  constexpr std::size_t most = 3;
  const std::vector<std::string> near = ledger.TransactionIds(transactionId, most);
  return CommandFailure("explaining the transaction failed",
                        fmt::format("the import read no lines of a transaction \"{}\"", transactionId),
                        near.empty()
                            ? "give its TxnID; only bills, checks, credit card charges, invoices and "
                              "sales receipts of the imported months are read"
                            : fmt::format("did you mean {}?", AlternativesText(near)));
}

std::string PlaceOfSlot(const LedgerFile& ledger, const ledger::LedgerSlot& slot) {
  if (slot.pastPeriod) {
    return fmt::format("{} of past performance, {}, month {}", OneLine(slot.name),
                       PeriodText(ledger.Facts(), true, *slot.pastPeriod), slot.number);
  }
  return fmt::format("{}, {}", OneLine(slot.name), PeriodText(ledger.Facts(), false, slot.number));
}

std::string BookedText(const LedgerFile& ledger, const BookedAmount& booked, std::size_t width) {
  const ledger::LedgerBooking& booking = booked.booking;
  std::string text = fmt::format("    {} to {}: {}", MoneyText(booking.amount),
                                 PlaceOfSlot(ledger, booked.slot), RuleClause(booking.rule));
  if (booking.rule == BookingRule::CostOfSale) text += ", " + AmountAsRead(booking);
  if (booking.billedAgain) text += ", more than was booked";
  text += '\n';
  if (const std::string why = WhyInNoCell(booked); !why.empty()) {
    return text + fmt::format("      in no cell: {}\n", why);
  }
  std::vector<std::string> cells;
  for (const ledger::LedgerCell& cell : booked.cells) {
    const bool sameName = FoldedKey(cell.row) == FoldedKey(booked.slot.name);
    cells.push_back(fmt::format("{} row {}{}", PlaceText(cell), cell.rowNumber,
                                sameName ? std::string() : fmt::format(" ({})", cell.row)));
  }
  return text + HangingNames("      ", "in ", cells, width);
}

std::string LineText(const ledger::LedgerLine& line) {
  const std::string& name = !line.itemName.empty()      ? line.itemName
                            : !line.accountName.empty() ? line.accountName
                            : !line.item.empty()        ? line.item
                                                        : line.account;
  return OneLine(fmt::format("  {}{}{}: {}", line.element, name.empty() ? "" : " ", name,
                             line.amount.empty() ? std::string("no amount") : line.amount)) +
         '\n';
}

std::string FateText(const LedgerFile& ledger, const LineFate& fate, std::size_t width) {
  std::string text = LineText(fate.line);
  for (const BookedAmount& booked : fate.booked) text += BookedText(ledger, booked, width);
  for (const ledger::LedgerOmission& omission : fate.omissions) {
    text += fmt::format("    left out: {}{}\n", ReasonText(omission.reason),
                        omission.kind == SkipKind::NotRequested ? " (or not requested)" : "");
  }
  for (const ledger::LedgerBooking& back : fate.takenBack) {
    const ledger::LedgerDocument document = ledger.Document(ledger.Line(back.line).document);
    text += fmt::format("    taken back by {} {} of {}: {}\n", KindText(document.request),
                        OneLine(document.number), document.date, MoneyText(back.amount));
  }
  if (const std::string why = WhyNothing(fate); !why.empty())
    text += fmt::format("    not booked: {}\n", why);
  return text;
}

std::string TitleOf(const LedgerFile& ledger, const ledger::LedgerDocument& document) {
  std::string text =
      OneLine(fmt::format("{}{}{} of {}{}{} (TxnID {})", KindText(document.request),
                          document.number.empty() ? "" : " ", document.number, document.date,
                          document.party.empty() ? "" : ", ", document.party, document.transactionId));
  if (document.pastPeriod) {
    text += fmt::format(", read for past performance, {}",
                        PeriodText(ledger.Facts(), true, *document.pastPeriod));
  }
  return text + '\n';
}

}  // namespace

std::vector<TransactionFate> FatesOf(const LedgerFile& ledger, const std::string& transactionId) {
  std::vector<TransactionFate> fates;
  for (const ledger::LedgerDocument& document : ledger.DocumentsOf(transactionId)) {
    TransactionFate& fate = fates.emplace_back(TransactionFate{document, {}});
    for (const ledger::LedgerLine& line : ledger.LinesOf(document)) {
      LineFate& lineFate =
          fate.lines.emplace_back(LineFate{line, {}, ledger.OmissionsOf(line), ledger.TakenBack(line)});
      for (const auto& [booking, replaced] : ledger.BookingsOf(line)) {
        const ledger::LedgerSlot& slot = ledger.Slot(booking.slot);
        lineFate.booked.push_back(
            {booking, replaced, slot, replaced ? std::vector<ledger::LedgerCell>() : CellsOf(ledger, slot)});
      }
    }
  }
  if (fates.empty()) throw NoSuchTransaction(ledger, transactionId);
  return fates;
}

std::string WhyInNoCell(const BookedAmount& booked) {
  if (booked.replaced) return "replaced by the account's balance, divided evenly over the months";
  if (!booked.cells.empty()) return {};
  if (booked.slot.pastPeriod) return "past performance does not take it from transactions";
  return "the plan has no row of this account, or these amounts were not requested";
}

std::string WhyNothing(const LineFate& fate) {
  if (!fate.booked.empty() || !fate.omissions.empty()) return {};
  const std::optional<double> amount = ConvertToDouble(fate.line.amount);
  return amount == 0.0 ? "the amount is 0" : "the import reads no such lines";
}

std::string TransactionReport(const LedgerFile& ledger, const std::vector<TransactionFate>& fates,
                              std::size_t width) {
  std::string text;
  for (const TransactionFate& fate : fates) {
    if (!text.empty()) text += '\n';
    text += TitleOf(ledger, fate.document);
    for (const LineFate& line : fate.lines) text += FateText(ledger, line, width);
  }
  return text;
}

}  // namespace krnqb::cli
