#include "import/amounts/expense_transactions.h"

#include <utility>

#include "import/amounts/transaction_reading.h"
#include "qbxml/request_catalogue.h"
#include "support/error_handling.h"
#include "support/number_text.h"

namespace krnqb {
namespace {

using Field = TransactionLine::Field;

std::string_view ResponseName(std::int32_t kind) {
  switch (kind) {
    case request_number::bills:
      return "BillQueryRs";
    case request_number::checks:
      return "CheckQueryRs";
    default:
      return "CreditCardChargeQueryRs";
  }
}

// An expense line names its account; an item line posts to the expense account of its item.
std::string_view AccountOf(LineBooking& booking, const TransactionLine& line) {
  if (line.element == "ExpenseLineRet") {
    if (line.accountId.value_or("").empty()) booking.ReportSkipped(line, SkipReason::NoAccount, {});
    return line.accountId.value_or("");
  }
  const std::string_view item = line.itemId.value_or("");
  if (item.empty()) {
    booking.ReportSkipped(line, SkipReason::NoItem, {});
    return {};
  }
  const ItemList& items = booking.context.state.itemListDocument;
  const std::string_view account = items.ExpenseAccount(item, booking.context.observer);
  if (account.empty()) booking.ReportSkipped(line, SkipReason::ItemWithoutAccount, item);
  return account;
}

void BookExpense(LineBooking& booking, const TransactionLine& line) {
  const double amount = booking.AmountOf(line);
  if (amount == 0) return;
  const std::string_view account = AccountOf(booking, line);
  if (account.empty()) return;
  static constexpr Booking charged{.rule = BookingRule::ChargedToExpense};
  static constexpr Booking credited{.rule = BookingRule::CreditedToIncome};
  if (booking.AddTo(AccountGroup::Expense, account, amount, line, charged)) return;
  if (booking.AddTo(AccountGroup::Income, account, -amount, line, credited)) return;
  booking.ReportSkipped(line, SkipReason::AccountInNoList, account);
}

// The key contains the amount's text, so amounts that are written differently do not match.
std::string BillableKey(const Field& customerId, const Field& amount) {
  return customerId && amount ? std::string(*customerId) + "," + std::string(*amount) : std::string();
}

// An item line is recorded with what the sale of its item posts to. This may be a marker, which is in no
// account list, so such an expense is never deducted.
std::string BillableAccount(LineBooking& booking, const TransactionLine& line) {
  const std::string_view account = line.anyAccountId.value_or("");
  if (!account.empty()) return std::string(account);
  if (!line.anyItemId) return {};
  const ItemList& items = booking.context.state.itemListDocument;
  return PostingText(items.IncomePosting(*line.anyItemId, booking.context.observer));
}

void RecordBillable(LineBooking& booking, const TransactionLine& line) {
  const std::string key = BillableKey(line.customerId, line.amount);
  const std::string account = BillableAccount(booking, line);
  if (key.empty() || account.empty()) return;
  SkipOnError(booking.context.observer, booking.place, [&] {
    auto& billable = booking.context.state.billableExpenses;
    if (!billable) throw Error(error_number::objectNotSet);
    const auto [expense, added] = billable->Add({.account = account, .line = booking.LineNumber()}, key);
    if (added) return;
    ++expense->booked;
    booking.ReportSkipped(line, SkipReason::DuplicateBillableKey, account);
  });
}

void KeepBilledAgain(LineBooking& booking, const TransactionLine& line, std::string_view customerId) {
  const std::string_view customer = line.customerName.empty() ? customerId : line.customerName;
  ++booking.context.state.tally
        .billedAgain[{std::string(customer), std::string(line.amount.value_or(std::string_view()))}];
}

}  // namespace

TransactionLines ReadExpenseTransactions(ImportContext& context, const TransactionQuery& query,
                                         TransactionLines used) {
  context.session.UseAgain(used.texts.TakeAnswer());
  used.Clear();
  LineBooking booking(context, query, Operation::ReadExpenseTransactions);
  Variant answer;
  SkipOnError(context.observer, booking.place,
              [&] { answer = context.session.QbSerialize(query.request, booking.place); });
  const LineSelection selection{
      ResponseName(query.kind), LinePlaces::DirectChildren, {}, booking.BookingsReceived()};
  TransactionLines read =
      ReadTransactionLines(std::move(answer), selection, context.observer, booking.place, std::move(used));
  context.state.tally.lines += static_cast<std::int64_t>(read.Count());
  for (const TransactionLine line : read) {
    booking.Begin(line);
    if (line.insideItemGroup) {
      booking.ReportSkipped(line, SkipReason::InsideItemGroup, line.itemId.value_or(""));
      continue;
    }
    BookExpense(booking, line);
    if (line.hasCustomer) RecordBillable(booking, line);
  }
  return read;
}

bool OffsetBilledExpense(LineBooking& booking, const TransactionLine& line) {
  // The customer of a line inside a group is two levels up.
  const Field& customerId = line.parentCustomerId ? line.parentCustomerId : line.grandparentCustomerId;
  const std::string key = BillableKey(customerId, line.amount);
  auto& billable = booking.context.state.billableExpenses;
  BillableExpense* const expense = billable && !key.empty() ? billable->Find(key) : nullptr;
  if (expense == nullptr || expense->account.empty()) return false;
  bool offset = false;
  EndOnError(booking.context.observer, booking.query.At(Operation::OffsetBilledExpense), [&] {
    const Booking takenBack{.rule = BookingRule::BilledExpenseTakenBack,
                            .billedLine = expense->line,
                            .billedAgain = expense->takenBack >= expense->booked};
    offset =
        booking.AddTo(AccountGroup::Expense, expense->account, -RequireDouble(*line.amount), line, takenBack);
    if (offset && ++expense->takenBack > expense->booked) KeepBilledAgain(booking, line, *customerId);
  });
  return offset;
}

}  // namespace krnqb
