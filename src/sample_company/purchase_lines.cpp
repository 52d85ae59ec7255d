#include "sample_company/draft.h"

// The lines of bills, checks and credit card charges.

namespace krnqb::sample_company {

void Draft::Charge(const std::optional<ChargedCustomer>& customer) {
  if (!customer) return;
  lines.Block("CustomerRef", customer->reference);
  lines.Text("BillableStatus", customer->isBilled ? "HasBeenBilled" : "Billable");
}

void Draft::ExpenseLine(std::size_t account, Cents amount, std::string_view memo,
                        const std::optional<ChargedCustomer>& customer) {
  OpenLine("ExpenseLineRet");
  lines.Block("AccountRef", company.accounts[account].reference);
  lines.Money("Amount", amount);
  if (!memo.empty()) lines.Text("Memo", memo);
  Charge(customer);
  lines.Close("ExpenseLineRet");
  postings.AddAccountLine(company.accounts[account].listId, amount);
  company.accounts.Post(account, amount);
  total += amount;
}

void Draft::BoughtLine(std::size_t index, std::int64_t pieces, Cents cost,
                       const std::optional<ChargedCustomer>& customer) {
  Item& item = company.items.items[index];
  const Cents amount = pieces * cost;
  OpenLine("ItemLineRet");
  lines.Block("ItemRef", item.reference);
  lines.Text("Desc", item.description);
  lines.Number("Quantity", pieces);
  lines.Money("Cost", cost);
  lines.Money("Amount", amount);
  Charge(customer);
  lines.Close("ItemLineRet");
  postings.AddItemLine(item.listId, amount, static_cast<double>(pieces));
  company.accounts.Post(item.boughtTo.value_or(item.soldTo), amount);
  if (item.kind == ItemKind::Inventory) item.stock += pieces;
  total += amount;
}

void Draft::BoughtGroup(std::size_t group, std::int64_t pieces, std::int64_t pricePermille) {
  const ItemList& list = company.items;
  Cents amount = 0;
  for (const GroupMember& member : list.items[group].members) {
    amount += pieces * member.quantity * CostOf(list.items[member.item], pricePermille);
  }
  lines.Open("ItemGroupLineRet");
  lines.Block("ItemGroupRef", list.items[group].reference);
  lines.Text("Desc", list.items[group].description);
  lines.Number("Quantity", pieces);
  lines.Money("TotalAmount", amount);
  for (const GroupMember& member : list.items[group].members) {
    BoughtLine(member.item, pieces * member.quantity, CostOf(list.items[member.item], pricePermille));
  }
  lines.Close("ItemGroupLineRet");
}

}  // namespace krnqb::sample_company
