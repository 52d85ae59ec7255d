#include "cli/report/transactions.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/explain/words.h"
#include "cli/report/amounts.h"
#include "html/elements.h"
#include "html/table.h"
#include "support/money_text.h"

namespace krnqb::cli {
namespace {

using ledger::LedgerBooking;
using ledger::LedgerSlot;

constexpr std::int64_t mostPerSum = 200;
constexpr std::int64_t mostTogether = 10'000;

// What a booking comes from, as far as it is that of a transaction.
struct Source {
  std::optional<ledger::LedgerDocument> document;
};

html::Row RowOf(const LedgerBooking& booking, const Source& source) {
  const auto& document = source.document;
  const std::string& account = booking.accountName.empty() ? booking.account : booking.accountName;
  const std::string& date = document ? document->date : booking.fromDate;
  return {.heading = {html::Text(date.empty() ? std::string("\u2014") : date)},
          .cells = {{html::Text(SourceText(booking, document))},
                    {html::Name(document ? document->number : std::string())},
                    {html::Name(document ? document->party : std::string())},
                    {html::Name(account)},
                    {html::Text(RuleText(booking.rule))},
                    {html::Text(AmountAsRead(booking))},
                    AmountCell(booking.amount)},
          .name = document ? document->transactionId : std::string()};
}

std::vector<html::Column> Columns() {
  using html::Alignment;
  return {{"Date", Alignment::Text},
          {"Kind", Alignment::Text},
          {"Number", Alignment::Text},
          {"Name", Alignment::Text},
          {"Account", Alignment::Text},
          {"Why", Alignment::Text},
          {"As read"},
          {"Amount"}};
}

bool SaysNothing(const LedgerBooking& booking, bool replaced) {
  const bool emptyAccount = booking.rule == BookingRule::PeriodTotal && booking.amount == 0;
  return replaced || emptyAccount || booking.rule == BookingRule::PeriodBegins;
}

html::Fragment Summary(const std::string& name, double amount) {
  return html::Text(name + ": ") + html::Text(MoneyText(amount));
}

// Adds the lengths of a sum's list and of those below it.
void AddLengths(const ledger::LedgerFile& ledger, const LedgerSlot& slot,
                std::vector<std::int64_t>& lengths) {
  lengths.push_back(std::min(ledger.BookingCount(slot.id), mostPerSum));
  if (slot.group != AmountGroup::PastPerformance) return;
  ledger.ForEachBooking(slot.id, [&](const LedgerBooking& booking, bool replaced) {
    if (SaysNothing(booking, replaced)) return;
    for (const LedgerSlot& month : MonthsOf(ledger, slot, booking)) AddLengths(ledger, month, lengths);
  });
}

}  // namespace

std::int64_t LimitForAll(std::vector<std::int64_t> lengths, std::int64_t most, std::int64_t together) {
  std::ranges::sort(lengths);
  auto left = static_cast<std::int64_t>(lengths.size());
  for (const std::int64_t length : lengths) {
    const std::int64_t share = together / left;
    if (length > share) return std::clamp(share, std::int64_t{1}, most);
    together -= length;
    --left;
  }
  return most;
}

TransactionLists::TransactionLists(const ledger::LedgerFile& ledger,
                                   const std::vector<ledger::RowFigures>& rows)
    : ledger_(ledger) {
  std::vector<std::int64_t> lengths;
  for (const ledger::RowFigures& row : rows) {
    for (const ledger::Figure& figure : row.figures) {
      for (const ledger::LedgerTerm& term : figure.terms) AddLengths(ledger, ledger.Slot(term.slot), lengths);
    }
  }
  most_ = LimitForAll(std::move(lengths), mostPerSum, mostTogether);
}

html::Fragment TransactionLists::Of(const ledger::RowFigures& row, const std::string& id) const {
  html::Fragment content;
  double year = 0;
  for (const ledger::Figure& figure : row.figures) {
    year += figure.amount;
    const html::Fragment list = FigureList(row, figure);
    if (list.Empty()) continue;
    const std::string period = PeriodText(ledger_.Facts(), figure.past, figure.number);
    content += html::Details(Summary(period, figure.amount), list);
  }
  if (content.Empty()) return {};
  const bool past = !row.figures.empty() && row.figures.front().past;
  const html::Fragment amount = past ? html::Fragment() : html::Text(": " + MoneyText(year));
  return html::Details(html::Name(row.name) + amount, content, id);
}

html::Fragment TransactionLists::FigureList(const ledger::RowFigures& row,
                                            const ledger::Figure& figure) const {
  html::Fragment lists;
  for (const ledger::LedgerTerm& term : figure.terms) {
    const LedgerSlot& slot = ledger_.Slot(term.slot);
    const std::string period = PeriodText(ledger_.Facts(), figure.past, figure.number);
    std::string caption = fmt::format("{}, {}", row.name, period);
    if (figure.terms.size() > 1 || slot.name != row.name) {
      caption += fmt::format(": {}{}", term.subtracted ? "less " : "", slot.name);
    }
    lists += SumList(slot, caption);
  }
  return lists;
}

html::Fragment TransactionLists::SumList(const LedgerSlot& slot, const std::string& caption) const {
  html::Table table{.caption = caption, .columns = Columns(), .rows = {}};
  html::Fragment accounts;
  std::int64_t rest = 0;
  double restSum = 0;
  Source source;
  ledger_.ForEachBooking(slot.id, [&](const LedgerBooking& booking, bool replaced) {
    if (SaysNothing(booking, replaced)) return;
    if (static_cast<std::int64_t>(table.rows.size()) >= most_) {
      ++rest;
      restSum += booking.amount;
      return;
    }
    source.document.reset();
    if (booking.line != 0) source.document = ledger_.Document(ledger_.Line(booking.line).document);
    table.rows.push_back(RowOf(booking, source));
    for (const LedgerSlot& month : MonthsOf(ledger_, slot, booking)) {
      const std::string name = fmt::format("{}, month {}", booking.accountName, month.number);
      const html::Fragment list = SumList(month, fmt::format("{}: {}", caption, name));
      if (!list.Empty()) accounts += html::Details(Summary(name, ledger_.SumOf(month.id)), list);
    }
  });
  if (rest > 0) {
    html::Row more{.heading = {html::Text(fmt::format("{} more", rest))}, .cells = {}};
    more.cells.resize(table.columns.size() - 2);
    more.cells.push_back(AmountCell(restSum));
    table.rows.push_back(std::move(more));
  }
  if (table.rows.size() > 1) {
    html::Row total{.heading = {html::Text("Sum")}, .cells = {}, .kind = html::RowKind::Total};
    total.cells.resize(table.columns.size() - 2);
    total.cells.push_back(AmountCell(ledger_.SumOf(slot.id)));
    table.rows.push_back(std::move(total));
  }
  return html::TableRegion(table) + accounts;
}

}  // namespace krnqb::cli
