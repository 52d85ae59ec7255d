#include "sample_company/list_text.h"

namespace krnqb::sample_company {
namespace {

std::string_view ElementOf(ItemKind kind) {
  switch (kind) {
    case ItemKind::Service:
      return "ItemServiceRet";
    case ItemKind::NonInventory:
      return "ItemNonInventoryRet";
    case ItemKind::OtherCharge:
      return "ItemOtherChargeRet";
    case ItemKind::Inventory:
      return "ItemInventoryRet";
    case ItemKind::Subtotal:
      return "ItemSubtotalRet";
    case ItemKind::Discount:
      return "ItemDiscountRet";
    case ItemKind::Group:
      return "ItemGroupRet";
  }
  return {};
}

class ItemWriter {
 public:
  ItemWriter(const ItemList& itemList, std::size_t itemIndex, const ChartOfAccounts& chart,
             const People& companyPeople)
      : list(itemList),
        index(itemIndex),
        item(itemList.items[itemIndex]),
        accounts(chart),
        people(companyPeople) {}

  std::string Write() {
    text.Open(ElementOf(item.kind));
    text.Text("ListID", item.listId);
    text.Times(item.created);
    text.Text("Name", Escaped(item.name));
    const bool isPlain = item.kind == ItemKind::Subtotal || item.kind == ItemKind::Group;
    if (!isPlain) text.Text("FullName", Escaped(item.fullName));
    text.Truth("IsActive", true);
    if (item.parent) text.Block("ParentRef", list.items[*item.parent].reference);
    if (!isPlain) text.Number("Sublevel", item.parent ? 1 : 0);
    Details();
    text.Close(ElementOf(item.kind));
    return text.Xml();
  }

 private:
  void Details() {
    switch (item.kind) {
      case ItemKind::Inventory:
        Inventory();
        break;
      case ItemKind::Subtotal:
        text.Text("ItemDesc", item.description);
        break;
      case ItemKind::Discount:
        text.Text("ItemDesc", item.description);
        text.Money("DiscountRatePercent", -item.discountPercent * 100);
        text.Block("AccountRef", accounts[item.soldTo].reference);
        break;
      case ItemKind::Group:
        Group();
        break;
      case ItemKind::Service:
      case ItemKind::NonInventory:
      case ItemKind::OtherCharge:
        item.hasSingleAccount ? SalesOrPurchase() : SalesAndPurchase();
        break;
    }
  }

  void SalesOrPurchase() {
    text.Open("SalesOrPurchase");
    text.Text("Desc", item.description);
    text.Money("Price", item.price);
    text.Block("AccountRef", accounts[item.soldTo].reference);
    text.Close("SalesOrPurchase");
  }

  void SalesAndPurchase() {
    text.Open("SalesAndPurchase");
    SalesSide();
    text.Text("PurchaseDesc", item.description);
    text.Money("PurchaseCost", item.cost);
    text.Block("ExpenseAccountRef", accounts[item.boughtTo.value_or(item.soldTo)].reference);
    text.Block("PrefVendorRef", Vendor());
    text.Close("SalesAndPurchase");
  }

  void Inventory() {
    SalesSide();
    text.Text("PurchaseDesc", item.description);
    text.Money("PurchaseCost", item.cost);
    text.Block("COGSAccountRef", accounts[item.costAccount].reference);
    text.Block("PrefVendorRef", Vendor());
    text.Block("AssetAccountRef", accounts[item.boughtTo.value_or(item.soldTo)].reference);
    text.Number("ReorderPoint", item.reorderPoint);
    text.Number("QuantityOnHand", item.stock);
    text.Money("AverageCost", item.averageCost);
    text.Number("QuantityOnOrder", 0);
    text.Number("QuantityOnSalesOrder", 0);
  }

  void SalesSide() {
    text.Text("SalesDesc", item.description);
    text.Money("SalesPrice", item.price);
    text.Block("IncomeAccountRef", accounts[item.soldTo].reference);
  }

  void Group() {
    text.Text("ItemDesc", item.description);
    text.Truth("IsPrintItemsInGroup", item.members.empty());
    for (const GroupMember& member : item.members) {
      text.Open("ItemGroupLine");
      text.Block("ItemRef", list.items[member.item].reference);
      text.Number("Quantity", member.quantity);
      text.Close("ItemGroupLine");
    }
  }

  const std::string& Vendor() const { return people.vendors[index % people.vendors.size()].reference; }

  const ItemList& list;
  std::size_t index;
  const Item& item;
  const ChartOfAccounts& accounts;
  const People& people;
  ElementText text;
};

}  // namespace

std::string ItemText(const ItemList& list, std::size_t item, const ChartOfAccounts& accounts,
                     const People& people) {
  return ItemWriter(list, item, accounts, people).Write();
}

}  // namespace krnqb::sample_company
