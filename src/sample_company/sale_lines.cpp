#include "sample_company/draft.h"

// The lines of invoices and sales receipts.

namespace krnqb::sample_company {
namespace {

// A part of an amount, halves rounded away from zero.
Cents Part(Cents amount, std::int64_t numerator, std::int64_t denominator) {
  const Cents product = amount * numerator;
  return (product + (product < 0 ? -denominator : denominator) / 2) / denominator;
}

}  // namespace

std::string_view Draft::SaleLine() const {
  return isInvoice ? "InvoiceLineRet" : "SalesReceiptLineRet";
}

std::string_view Draft::SaleGroup() const {
  return isInvoice ? "InvoiceLineGroupRet" : "SalesReceiptLineGroupRet";
}

void Draft::PostSold(const Item& item, Cents amount, std::int64_t hundredths) {
  postings.AddItemLine(item.listId, amount, static_cast<double>(hundredths) / 100);
  company.accounts.Post(item.soldTo, -amount);
  if (item.kind == ItemKind::Inventory) {
    const Cents cost = item.averageCost * hundredths / 100;
    company.accounts.Post(item.costAccount, cost);
    company.accounts.Post(item.boughtTo.value_or(item.soldTo), -cost);
  }
  total += amount;
}

Cents Draft::SoldLine(const Sold& sold) {
  Item& item = company.items.items[sold.item];
  const Cents amount = Part(sold.rate, sold.hundredths, 100);
  OpenLine(SaleLine());
  lines.Block("ItemRef", item.reference);
  lines.Text("Desc", item.description);
  lines.Quantity("Quantity", sold.hundredths);
  lines.Money("Rate", sold.rate);
  lines.Money("Amount", amount);
  if (sold.isService) lines.Text("ServiceDate", dayText);
  lines.Close(SaleLine());
  PostSold(item, amount, sold.hundredths);
  if (item.kind == ItemKind::Inventory) item.stock -= sold.hundredths / 100;
  return amount;
}

void Draft::SoldGroup(std::size_t group, std::int64_t pieces, std::int64_t pricePermille) {
  const ItemList& list = company.items;
  const auto rate = [&](const GroupMember& member) {
    return PriceOf(list.items[member.item], pricePermille);
  };
  Cents amount = 0;
  for (const GroupMember& member : list.items[group].members)
    amount += pieces * member.quantity * rate(member);
  lines.Open(SaleGroup());
  lines.Block("ItemGroupRef", list.items[group].reference);
  lines.Text("Desc", list.items[group].description);
  lines.Number("Quantity", pieces);
  lines.Truth("IsPrintItemsInGroup", false);
  lines.Money("TotalAmount", amount);
  for (const GroupMember& member : list.items[group].members) {
    SoldLine({member.item, pieces * member.quantity * 100, rate(member)});
  }
  lines.Close(SaleGroup());
}

void Draft::DiscountLine(std::size_t discount, Cents discounted) {
  const Item& item = company.items.items[discount];
  const Cents amount = -Part(discounted, item.discountPercent, 100);
  OpenLine(SaleLine());
  lines.Block("ItemRef", item.reference);
  lines.Text("Desc", item.description);
  lines.Money("RatePercent", -item.discountPercent * 100);
  lines.Money("Amount", amount);
  lines.Close(SaleLine());
  PostSold(item, amount, 100);
}

void Draft::PaymentLine(Cents amount, std::string_view description) {
  const Item& item = company.items.items[company.items.payment];
  OpenLine(SaleLine());
  lines.Block("ItemRef", item.reference);
  lines.Text("Desc", description);
  lines.Money("Amount", amount);
  lines.Close(SaleLine());
  PostSold(item, amount, 100);
}

void Draft::DescriptionLine(std::string_view description) {
  OpenLine(SaleLine());
  lines.Text("Desc", description);
  lines.Close(SaleLine());
}

void Draft::OpenBilledCosts(Cents groupTotal) {
  const Item& group = company.items.items[company.items.billedCosts.value_or(company.items.payment)];
  lines.Open(SaleGroup());
  lines.Block("ItemGroupRef", group.reference);
  lines.Text("Desc", group.description);
  lines.Truth("IsPrintItemsInGroup", true);
  lines.Money("TotalAmount", groupTotal);
}

void Draft::BilledCostLine(std::string_view description, Cents amount) {
  OpenLine(SaleLine());
  lines.Text("Desc", description);
  lines.Money("Amount", amount);
  lines.Close(SaleLine());
  total += amount;
}

void Draft::CloseBilledCosts() {
  lines.Close(SaleGroup());
}

}  // namespace krnqb::sample_company
