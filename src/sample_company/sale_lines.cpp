#include "sample_company/draft.h"

// The lines of invoices and sales receipts.

namespace krnqb::sample_company {
namespace {

// Returns a fraction of an amount, halves rounded away from zero.
Cents Part(Cents amount, std::int64_t numerator, std::int64_t denominator) {
  const Cents product = amount * numerator;
  return (product + (product < 0 ? -denominator : denominator) / 2) / denominator;
}

}  // namespace

std::string_view Draft::SaleLine() const {
  return isInvoice_ ? "InvoiceLineRet" : "SalesReceiptLineRet";
}

std::string_view Draft::SaleGroup() const {
  return isInvoice_ ? "InvoiceLineGroupRet" : "SalesReceiptLineGroupRet";
}

void Draft::PostSold(const Item& item, Cents amount, std::int64_t hundredths) {
  postings_.AddItemLine(item.listId, amount, static_cast<double>(hundredths) / 100);
  company_.accounts.Post(item.soldTo, -amount);
  if (item.kind == ItemKind::Inventory) {
    const Cents cost = item.averageCost * hundredths / 100;
    company_.accounts.Post(item.costAccount, cost);
    company_.accounts.Post(item.boughtTo.value_or(item.soldTo), -cost);
  }
  total_ += amount;
}

Cents Draft::SoldLine(const Sold& sold) {
  Item& item = company_.items.items[sold.item];
  const Cents amount = Part(sold.rate, sold.hundredths, 100);
  OpenLine(SaleLine());
  lines_.Block("ItemRef", item.reference);
  lines_.Text("Desc", item.description);
  lines_.Quantity("Quantity", sold.hundredths);
  lines_.Money("Rate", sold.rate);
  lines_.Money("Amount", amount);
  if (sold.isService) lines_.Text("ServiceDate", dayText_);
  lines_.Close(SaleLine());
  PostSold(item, amount, sold.hundredths);
  if (item.kind == ItemKind::Inventory) item.stock -= sold.hundredths / 100;
  return amount;
}

void Draft::SoldGroup(std::size_t group, std::int64_t pieces, std::int64_t pricePermille) {
  const ItemList& list = company_.items;
  const auto rate = [&](const GroupMember& member) {
    return PriceOf(list.items[member.item], pricePermille);
  };
  Cents amount = 0;
  for (const GroupMember& member : list.items[group].members)
    amount += pieces * member.quantity * rate(member);
  lines_.Open(SaleGroup());
  lines_.Block("ItemGroupRef", list.items[group].reference);
  lines_.Text("Desc", list.items[group].description);
  lines_.Number("Quantity", pieces);
  lines_.Boolean("IsPrintItemsInGroup", false);
  lines_.Money("TotalAmount", amount);
  for (const GroupMember& member : list.items[group].members) {
    SoldLine({member.item, pieces * member.quantity * 100, rate(member)});
  }
  lines_.Close(SaleGroup());
}

void Draft::DiscountLine(std::size_t discount, Cents discounted) {
  const Item& item = company_.items.items[discount];
  const Cents amount = -Part(discounted, item.discountPercent, 100);
  OpenLine(SaleLine());
  lines_.Block("ItemRef", item.reference);
  lines_.Text("Desc", item.description);
  lines_.Money("RatePercent", -item.discountPercent * 100);
  lines_.Money("Amount", amount);
  lines_.Close(SaleLine());
  PostSold(item, amount, 100);
}

void Draft::PaymentLine(Cents amount, std::string_view description) {
  const Item& item = company_.items.items[company_.items.payment];
  OpenLine(SaleLine());
  lines_.Block("ItemRef", item.reference);
  lines_.Text("Desc", description);
  lines_.Money("Amount", amount);
  lines_.Close(SaleLine());
  PostSold(item, amount, 100);
}

void Draft::DescriptionLine(std::string_view description) {
  OpenLine(SaleLine());
  lines_.Text("Desc", description);
  lines_.Close(SaleLine());
}

void Draft::OpenBilledCosts(Cents groupTotal) {
  const Item& group = company_.items.items[company_.items.billedCosts.value_or(company_.items.payment)];
  lines_.Open(SaleGroup());
  lines_.Block("ItemGroupRef", group.reference);
  lines_.Text("Desc", group.description);
  lines_.Boolean("IsPrintItemsInGroup", true);
  lines_.Money("TotalAmount", groupTotal);
}

void Draft::BilledCostLine(std::string_view description, Cents amount) {
  OpenLine(SaleLine());
  lines_.Text("Desc", description);
  lines_.Money("Amount", amount);
  lines_.Close(SaleLine());
  total_ += amount;
}

void Draft::CloseBilledCosts() {
  lines_.Close(SaleGroup());
}

}  // namespace krnqb::sample_company
