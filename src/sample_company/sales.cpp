#include "sample_company/sales.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace krnqb::sample_company {
namespace {

constexpr std::int64_t fewestInvoiceLines = 4;
constexpr std::int64_t mostInvoiceLines = 11;
constexpr std::int64_t mostReceiptLines = 9;
constexpr unsigned percentDiscounts = 5;
constexpr unsigned percentReturns = 4;
constexpr unsigned percentMarkedUp = 30;
constexpr std::int64_t markupPercent = 15;

constexpr std::array<std::string_view, 4> descriptions = {
    "Thank you for your business", "Colours as discussed on the site",
    "Work to be continued in the next month", "Please call us before you water the new plants"};
constexpr std::array<std::string_view, 3> paymentMethodNames = {"Cash", "Check", "Visa"};

}  // namespace

Sales::Sales(Company& company, Draft& draft, Obligations& obligations, Purchases& purchases, Random& random)
    : company_(company), draft_(draft), obligations_(obligations), purchases_(purchases), random_(random) {
  for (const std::string_view name : paymentMethodNames) {
    const std::int64_t number = static_cast<std::int64_t>(paymentMethods_.size()) + 1;
    paymentMethods_.push_back(ReferenceLines(ListIdText(number, company_.begun), name));
  }
}

company::CompanyRecord Sales::Invoice(const Occasion& occasion) {
  const auto customer = static_cast<std::size_t>(random_.Below(company_.people.customers.size()));
  draft_.Begin("InvoiceRet", occasion);
  Lines(occasion, random_.Between(fewestInvoiceLines, mostInvoiceLines));
  return FinishInvoice(occasion, customer);
}

company::CompanyRecord Sales::Receipt(const Occasion& occasion) {
  draft_.Begin("SalesReceiptRet", occasion);
  Lines(occasion, random_.Between(1, mostReceiptLines));
  return FinishReceipt(occasion, random_.Pick(company_.people.customers));
}

company::CompanyRecord Sales::CostInvoice(const Occasion& occasion, std::size_t customer) {
  const std::vector<OpenItem> costs = obligations_.Settle({ObligationKind::BillCustomer, customer});
  draft_.Begin("InvoiceRet", occasion);
  Line(occasion);
  // Items bought for a customer are sold to that customer at cost or at their price.
  for (const OpenItem& cost : costs) {
    if (!cost.item) continue;
    const Item& item = company_.items.items[*cost.item];
    const Cents rate =
        random_.Chance(percentMarkedUp) ? PriceOf(item, occasion.pricePermille) : cost.amount / cost.pieces;
    draft_.SoldLine({*cost.item, cost.pieces * 100, rate});
  }
  BilledCosts(costs);
  return FinishInvoice(occasion, customer);
}

void Sales::BilledCosts(const std::vector<OpenItem>& costs) {
  std::vector<OpenItem> expenses;
  Cents total = 0;
  for (const OpenItem& cost : costs) {
    if (cost.item) continue;
    expenses.push_back(cost);
    if (random_.Chance(percentMarkedUp))
      expenses.back().amount += std::max<Cents>(1, cost.amount * markupPercent / 100);
    total += expenses.back().amount;
  }
  if (expenses.empty()) return;
  draft_.OpenBilledCosts(total);
  for (const OpenItem& expense : expenses) draft_.BilledCostLine(expense.description, expense.amount);
  draft_.CloseBilledCosts();
}

company::CompanyRecord Sales::CustomerPayment(const Occasion& occasion, std::size_t customer) {
  draft_.Begin("SalesReceiptRet", occasion);
  for (const OpenItem& invoice : obligations_.Settle({ObligationKind::CollectFromCustomer, customer})) {
    draft_.PaymentLine(invoice.amount, fmt::format("Invoice {}", invoice.number));
  }
  return FinishReceipt(occasion, company_.people.customers[customer]);
}

void Sales::Lines(const Occasion& occasion, std::int64_t count) {
  for (std::int64_t rest = count; rest > 0; --rest) Line(occasion);
}

void Sales::Line(const Occasion& occasion) {
  const std::uint64_t choice = random_.Below(100);
  if (choice < 30) {
    ServiceLine(occasion);
  } else if (choice < 62 && company_.settings.features.inventory) {
    StockLine(occasion);
  } else if (choice < 88) {
    const std::size_t goods = random_.Pick(company_.items.goods);
    PieceLine(occasion, goods, random_.Between(1, 8));
  } else if (choice < 94) {
    PieceLine(occasion, random_.Pick(company_.items.charges), 1);
  } else if (choice < 97) {
    GroupLines(occasion);
  } else {
    draft_.DescriptionLine(random_.Pick(descriptions));
    ServiceLine(occasion);
  }
}

void Sales::ServiceLine(const Occasion& occasion) {
  const std::size_t service = random_.Pick(company_.items.services);
  const std::int64_t quarterHours = random_.Between(2, 48);
  draft_.SoldLine(
      {service, quarterHours * 25, PriceOf(company_.items.items[service], occasion.pricePermille), true});
}

void Sales::StockLine(const Occasion& occasion) {
  const std::int64_t pieces = random_.Between(1, 10);
  if (const auto item = ItemInStock(pieces)) {
    PieceLine(occasion, *item, pieces);
  } else {
    ServiceLine(occasion);
  }
}

// Goods, possibly followed by a discount or a return of some pieces.
void Sales::PieceLine(const Occasion& occasion, std::size_t index, std::int64_t pieces) {
  const Item& item = company_.items.items[index];
  const Cents rate = PriceOf(item, occasion.pricePermille);
  const Cents amount = draft_.SoldLine({index, pieces * 100, rate});
  if (company_.settings.features.discounts && random_.Chance(percentDiscounts)) {
    draft_.DiscountLine(random_.Pick(company_.items.discounts), amount);
  }
  if (pieces > 1 && random_.Chance(percentReturns)) {
    draft_.SoldLine({index, -100 * random_.Between(1, pieces - 1), rate});
  }
}

void Sales::GroupLines(const Occasion& occasion) {
  const std::size_t group = random_.Pick(company_.items.groups);
  const std::int64_t pieces = random_.Between(1, 3);
  for (const GroupMember& member : company_.items.items[group].members) {
    const Item& item = company_.items.items[member.item];
    if (item.kind == ItemKind::Inventory && item.stock < pieces * member.quantity)
      return ServiceLine(occasion);
  }
  draft_.SoldGroup(group, pieces, occasion.pricePermille);
}

// Returns an item with enough pieces in stock; reorders those found short.
std::optional<std::size_t> Sales::ItemInStock(std::int64_t pieces) {
  for (int attempt = 0; attempt < 3; ++attempt) {
    const std::size_t index = random_.Pick(company_.items.inventory);
    const Item& item = company_.items.items[index];
    if (item.stock - pieces < item.reorderPoint) purchases_.Reorder(index);
    if (item.stock >= pieces) return index;
  }
  return std::nullopt;
}

company::CompanyRecord Sales::FinishInvoice(const Occasion& occasion, std::size_t index) {
  const Party& customer = company_.people.customers[index];
  const std::size_t receivable = company_.accounts.Of(AccountRole::Receivable);
  const Obligation payment{ObligationKind::CollectFromCustomer, index};
  const Day due = occasion.day + std::chrono::days(customer.termDays);
  const bool isPaid = obligations_.CanPromise(payment, due);
  const std::int64_t number = ++lastInvoice_;
  if (isPaid) obligations_.Promise(payment, due, {draft_.Total(), number, {}, {}, 0});

  ElementText& head = draft_.Head();
  head.Block("CustomerRef", customer.reference);
  head.Block("ARAccountRef", company_.accounts[receivable].reference);
  head.Text("TxnDate", occasion.dayText);
  head.Number("RefNumber", number);
  head.Block("BillAddress", customer.address);
  head.Boolean("IsPending", false);
  head.Text("DueDate", DayText(due));
  head.Text("ShipDate", occasion.dayText);
  head.Money("Subtotal", draft_.Total());
  head.Money("SalesTaxTotal", 0);
  head.Money("AppliedAmount", isPaid ? -draft_.Total() : 0);
  head.Money("BalanceRemaining", isPaid ? 0 : draft_.Total());
  head.Boolean("IsPaid", isPaid);
  head.Boolean("IsToBePrinted", false);
  draft_.PostTotal(receivable);
  return draft_.Finish({});
}

company::CompanyRecord Sales::FinishReceipt(const Occasion& occasion, const Party& customer) {
  const std::size_t bank = company_.choices.Bank(random_);
  ElementText& head = draft_.Head();
  head.Block("CustomerRef", customer.reference);
  head.Text("TxnDate", occasion.dayText);
  head.Number("RefNumber", ++lastReceipt_);
  head.Boolean("IsPending", false);
  head.Block("PaymentMethodRef", random_.Pick(paymentMethods_));
  head.Text("DueDate", occasion.dayText);
  head.Text("ShipDate", occasion.dayText);
  head.Money("Subtotal", draft_.Total());
  head.Money("SalesTaxTotal", 0);
  head.Money("TotalAmount", draft_.Total());
  head.Boolean("IsToBePrinted", false);
  head.Block("DepositToAccountRef", company_.accounts[bank].reference);
  draft_.PostTotal(bank);
  return draft_.Finish({});
}

}  // namespace krnqb::sample_company
