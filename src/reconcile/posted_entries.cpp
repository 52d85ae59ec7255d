#include "reconcile/posted_entries.h"

#include <algorithm>
#include <array>
#include <unordered_map>

#include "support/date.h"

namespace krnqb::reconcile {
namespace {

constexpr std::array<std::string_view, 5> kindsRead = {"BillRet", "CheckRet", "CreditCardChargeRet",
                                                       "InvoiceRet", "SalesReceiptRet"};

// Returns the name of a label like "60200 · Rent".
std::string_view WithoutNumber(std::string_view label) {
  constexpr std::string_view separator = " \u00b7 ";
  const std::size_t at = label.find(separator);
  return at == std::string_view::npos ? label : label.substr(at + separator.size());
}

// Returns the months of a date after `start`, or nothing if it is not in the twelve months.
std::optional<std::uint8_t> MonthOf(std::string_view date, const YearMonth& start) {
  const auto number = [&](std::size_t from, std::size_t length) {
    int value = 0;
    for (const char digit : date.substr(from, length)) value = value * 10 + (digit - '0');
    return value;
  };
  if (date.size() < 7) return std::nullopt;
  const int months = (number(0, 4) - start.year) * 12 + number(5, 2) - start.month;
  return months < 0 || months >= static_cast<int>(monthsOfAYear)
             ? std::nullopt
             : std::optional(static_cast<std::uint8_t>(months));
}

}  // namespace

PostedEntries ReadPostedEntries(const company::CompanyFile& company, const YearMonth& start, WorkTable& table,
                                LineKeys& keys) {
  const YearMonth last = TwelveMonths(start).Last();
  const std::string firstDay = DateText(start.year, start.month, 1);
  const std::string lastDay = DateText(last.year, last.month, DaysInMonth(last));
  PostedEntries posted;
  std::unordered_map<std::string, std::uint32_t> lines;  // by ListID
  // No day is in this period: only accounts and balances are needed, and adding up months takes long.
  const company::ProfitAndLoss books = company.ProfitAndLoss(lastDay, firstDay);
  for (const company::ProfitAndLossAccount& account : books.accounts) {
    const std::optional<Group> group = GroupOfType(account.type);
    if (!group) continue;
    const std::string_view name = WithoutNumber(books.accounts[account.topLevel].label);
    lines.emplace(account.id, static_cast<std::uint32_t>(table.LineOf(*group, name)));
    if (!account.balance || account.Unexplained() == 0) continue;
    posted.balances.push_back({.account = account.fullName,
                               .balance = ExactAmount::FromHundredths(*account.balance),
                               .posted = ExactAmount::FromHundredths(account.posted)});
  }
  for (const std::string& transaction : company.PendingSales(firstDay, lastDay)) {
    posted.pendingSales.insert(table.transactions.NumberOf(transaction));
  }
  // The import reads one kind after the other, but each in the order of days as well.
  std::array<std::uint32_t, kindsRead.size() + 1> lastOfKind = {};
  company.ReadLedgerEntries(firstDay, lastDay, [&](const company::LedgerEntry& entry) {
    const auto line = lines.find(entry.accountId);
    const std::optional<std::uint8_t> month = MonthOf(entry.date, start);
    if (line == lines.end() || !month) return;
    const auto kind = static_cast<std::size_t>(std::ranges::find(kindsRead, entry.kind) - kindsRead.begin());
    std::uint32_t& previous = lastOfKind.at(kind);
    const std::uint32_t transaction = table.transactions.NumberOf(entry.transactionId, previous + 1);
    previous = transaction;
    const PostedEntry kept{.key = keys.NumberOf(transaction, entry.lineId),
                           .transaction = transaction,
                           .line = line->second,
                           .month = *month,
                           .kindRead = kind < kindsRead.size(),
                           .isSale = kind == 3 || kind == 4,
                           .inItemGroup = entry.inItemGroup,
                           .isCost = entry.cost.has_value(),
                           .amount = ExactAmount::FromHundredths(entry.amount)};
    table.At(kept.line).months[kept.month].ledger += kept.amount;
    posted.entries.push_back(kept);
  });
  return posted;
}

}  // namespace krnqb::reconcile
