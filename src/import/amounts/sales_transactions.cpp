#include "import/amounts/sales_transactions.h"

#include <cmath>
#include <utility>

#include "import/amounts/expense_transactions.h"
#include "import/amounts/transaction_reading.h"
#include "qbxml/request_catalogue.h"
#include "support/error_handling.h"
#include "support/number_text.h"
#include "support/warning_report.h"

namespace krnqb {
namespace {

// Returns the item's name, or else its id.
std::string ItemLabel(LineBooking& booking, const TransactionLine& line) {
  const std::string_view item = ItemOf(line);
  const std::string_view name = booking.FullNameOf(line, item);
  return std::string(name.empty() ? item : name);
}

// Halfway between the largest single-precision number and the next power of two. Smaller numbers round to a
// finite single.
constexpr double firstBeyondSingle = 0x1.ffffffp127;

// Returns the quantity in single precision, or 1 if it is missing, 0, not a number or out of range.
float QuantityOf(LineBooking& booking, const TransactionLine& line) {
  float quantity = 0;
  const bool read = SkipOnError(booking.context.observer, booking.place, [&] {
    if (!line.quantity) return;
    const double number = RequireDouble(*line.quantity);
    if (std::abs(number) >= firstBeyondSingle) throw Error(error_number::overflow);
    quantity = static_cast<float>(number);
  });
  if (!read) {
    ReportWarning(booking.context.observer, booking.place, [&] {
      return Finding{.code = WarningCode::QuantityAsOne,
                     .name = ItemLabel(booking, line),
                     .text = std::string(*line.quantity)};
    });
  }
  return quantity == 0 ? 1 : quantity;
}

bool BooksCost(const SalePosting& posting) {
  const auto* const account = std::get_if<AccountId>(&posting);
  return account == nullptr || IsCostOfGoodsMarker(*account);
}

// Books the cost of goods and returns the income account. If booking fails, returns the marker, which is in
// no account list, so the income is not booked either.
AccountId BookCost(LineBooking& booking, const TransactionLine& line, const SalePosting& posting) {
  AccountId account;
  const float quantity = QuantityOf(booking, line);
  const bool booked = SkipOnError(booking.context.observer, booking.place, [&] {
    account = BookCostOfSale(booking, line, booking.CostOfSaleIn(posting), quantity);
  });
  return booked ? account : PostingText(posting);
}

void BookSale(LineBooking& booking, const TransactionLine& line) {
  const double amount = booking.AmountOf(line);
  if (amount == 0) return;
  const std::string_view item = ItemOf(line);
  if (item.empty()) return booking.ReportSkipped(line, SkipReason::NoItem, {});
  const ItemList& items = booking.context.state.itemListDocument;
  const SalePosting& posting = items.IncomePosting(item, booking.context.observer);
  if (posting == SalePosting()) {
    if (!OffsetBilledExpense(booking, line))
      booking.ReportSkipped(line, SkipReason::ItemWithoutAccount, item);
    return;
  }
  const AccountId account =
      BooksCost(posting) ? BookCost(booking, line, posting) : std::get<AccountId>(posting);
  static constexpr Booking sold{.rule = BookingRule::Sale};
  static constexpr Booking credited{.rule = BookingRule::SaleCreditedToExpense};
  if (booking.AddTo(AccountGroup::Income, account, amount, line, sold)) return;
  if (booking.AddTo(AccountGroup::Expense, account, -amount, line, credited)) return;
  booking.ReportSkipped(line, SkipReason::AccountInNoList, account);
}

}  // namespace

TransactionLines ReadSalesTransactions(ImportContext& context, const TransactionQuery& query,
                                       TransactionLines used) {
  context.session.UseAgain(used.texts.TakeAnswer());
  used.Clear();
  LineBooking booking(context, query, Operation::ReadSalesTransactions);
  Variant answer;
  SkipOnError(context.observer, booking.place,
              [&] { answer = context.session.QbSerialize(query.request, booking.place); });
  const bool invoices = query.kind == request_number::invoices;
  const LineSelection selection{invoices ? "InvoiceQueryRs" : "SalesReceiptQueryRs", LinePlaces::Anywhere,
                                invoices ? "InvoiceLineRet" : "SalesReceiptLineRet",
                                booking.BookingsReceived()};
  TransactionLines read =
      ReadTransactionLines(std::move(answer), selection, context.observer, booking.place, std::move(used));
  context.state.tally.lines += static_cast<std::int64_t>(read.Count());
  for (const TransactionLine line : read) {
    booking.Begin(line);
    BookSale(booking, line);
  }
  return read;
}

AccountId BookCostOfSale(LineBooking& booking, const TransactionLine& line, const CostOfSale& sale,
                         float quantity) {
  const double averageCost = LeadingNumber(sale.averageCost);
  const double cost = averageCost * static_cast<double>(quantity);
  if (!std::isfinite(cost)) throw Error(error_number::overflow);
  if (!ReadsWhole(sale.averageCost)) {
    ReportWarning(booking.context.observer, booking.place, [&] {
      return Finding{.code = WarningCode::TextCut,
                     .name = ItemLabel(booking, line),
                     .text = sale.averageCost,
                     .amount = averageCost};
    });
  }
  const LineBooking::Target& target = booking.TargetOf(AccountGroup::CostOfGoods, sale.costAccount);
  const std::string& name = target.topLevel->name;
  if (name.empty()) {
    booking.ReportSkipped(line, SkipReason::AccountInNoList, sale.costAccount);
  } else {
    if (target.subtotal == nullptr) throw Error(error_number::invalidProcedureCall);
    target.subtotal->AddToSubTotal(booking.query.month, cost);
    booking.Report(AccountGroup::CostOfGoods, name, sale.costAccount, cost, line,
                   {.rule = BookingRule::CostOfSale, .quantity = quantity, .averageCost = averageCost});
  }
  return sale.incomeAccount;
}

}  // namespace krnqb
