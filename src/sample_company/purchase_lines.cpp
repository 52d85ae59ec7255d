#include "sample_company/draft.h"

// The lines of bills, checks and credit card charges.

namespace krnqb::sample_company {

void Draft::Charge(const std::optional<ChargedCustomer>& customer) {
  if (!customer) return;
  lines_.Block("CustomerRef", customer->reference);
  lines_.Text("BillableStatus", customer->isBilled ? "HasBeenBilled" : "Billable");
}

void Draft::ExpenseLine(std::size_t account, Cents amount, std::string_view memo,
                        const std::optional<ChargedCustomer>& customer) {
  OpenLine("ExpenseLineRet");
  lines_.Block("AccountRef", company_.accounts[account].reference);
  lines_.Money("Amount", amount);
  if (!memo.empty()) lines_.Text("Memo", memo);
  Charge(customer);
  lines_.Close("ExpenseLineRet");
  postings_.AddAccountLine(company_.accounts[account].listId, amount);
  company_.accounts.Post(account, amount);
  total_ += amount;
}

void Draft::BoughtLine(std::size_t index, std::int64_t pieces, Cents cost,
                       const std::optional<ChargedCustomer>& customer) {
  Item& item = company_.items.items[index];
  const Cents amount = pieces * cost;
  OpenLine("ItemLineRet");
  lines_.Block("ItemRef", item.reference);
  lines_.Text("Desc", item.description);
  lines_.Number("Quantity", pieces);
  lines_.Money("Cost", cost);
  lines_.Money("Amount", amount);
  Charge(customer);
  lines_.Close("ItemLineRet");
  postings_.AddItemLine(item.listId, amount, static_cast<double>(pieces));
  company_.accounts.Post(item.boughtTo.value_or(item.soldTo), amount);
  if (item.kind == ItemKind::Inventory) item.stock += pieces;
  total_ += amount;
}

void Draft::BoughtGroup(std::size_t group, std::int64_t pieces, std::int64_t pricePermille) {
  const ItemList& list = company_.items;
  Cents amount = 0;
  for (const GroupMember& member : list.items[group].members) {
    amount += pieces * member.quantity * CostOf(list.items[member.item], pricePermille);
  }
  lines_.Open("ItemGroupLineRet");
  lines_.Block("ItemGroupRef", list.items[group].reference);
  lines_.Text("Desc", list.items[group].description);
  lines_.Number("Quantity", pieces);
  lines_.Money("TotalAmount", amount);
  for (const GroupMember& member : list.items[group].members) {
    BoughtLine(member.item, pieces * member.quantity, CostOf(list.items[member.item], pricePermille));
  }
  lines_.Close("ItemGroupLineRet");
}

}  // namespace krnqb::sample_company
