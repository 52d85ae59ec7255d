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
  ItemWriter(const ItemList& list, std::size_t index, const ChartOfAccounts& accounts, const People& people)
      : list_(list), index_(index), item_(list.items[index]), accounts_(accounts), people_(people) {}

  std::string Write() {
    text_.Open(ElementOf(item_.kind));
    text_.Text("ListID", item_.listId);
    text_.Times(item_.created);
    text_.Text("Name", Escaped(item_.name));
    const bool isPlain = item_.kind == ItemKind::Subtotal || item_.kind == ItemKind::Group;
    if (!isPlain) text_.Text("FullName", Escaped(item_.fullName));
    text_.Boolean("IsActive", true);
    if (item_.parent) text_.Block("ParentRef", list_.items[*item_.parent].reference);
    if (!isPlain) text_.Number("Sublevel", item_.parent ? 1 : 0);
    Details();
    text_.Close(ElementOf(item_.kind));
    return text_.Xml();
  }

 private:
  void Details() {
    switch (item_.kind) {
      case ItemKind::Inventory:
        Inventory();
        break;
      case ItemKind::Subtotal:
        text_.Text("ItemDesc", item_.description);
        break;
      case ItemKind::Discount:
        text_.Text("ItemDesc", item_.description);
        text_.Money("DiscountRatePercent", -item_.discountPercent * 100);
        text_.Block("AccountRef", accounts_[item_.soldTo].reference);
        break;
      case ItemKind::Group:
        Group();
        break;
      case ItemKind::Service:
      case ItemKind::NonInventory:
      case ItemKind::OtherCharge:
        item_.hasSingleAccount ? SalesOrPurchase() : SalesAndPurchase();
        break;
    }
  }

  void SalesOrPurchase() {
    text_.Open("SalesOrPurchase");
    text_.Text("Desc", item_.description);
    text_.Money("Price", item_.price);
    text_.Block("AccountRef", accounts_[item_.soldTo].reference);
    text_.Close("SalesOrPurchase");
  }

  void SalesAndPurchase() {
    text_.Open("SalesAndPurchase");
    SalesSide();
    text_.Text("PurchaseDesc", item_.description);
    text_.Money("PurchaseCost", item_.cost);
    text_.Block("ExpenseAccountRef", accounts_[item_.boughtTo.value_or(item_.soldTo)].reference);
    text_.Block("PrefVendorRef", Vendor());
    text_.Close("SalesAndPurchase");
  }

  void Inventory() {
    SalesSide();
    text_.Text("PurchaseDesc", item_.description);
    text_.Money("PurchaseCost", item_.cost);
    text_.Block("COGSAccountRef", accounts_[item_.costAccount].reference);
    text_.Block("PrefVendorRef", Vendor());
    text_.Block("AssetAccountRef", accounts_[item_.boughtTo.value_or(item_.soldTo)].reference);
    text_.Number("ReorderPoint", item_.reorderPoint);
    text_.Number("QuantityOnHand", item_.stock);
    text_.Money("AverageCost", item_.averageCost);
    text_.Number("QuantityOnOrder", 0);
    text_.Number("QuantityOnSalesOrder", 0);
  }

  void SalesSide() {
    text_.Text("SalesDesc", item_.description);
    text_.Money("SalesPrice", item_.price);
    text_.Block("IncomeAccountRef", accounts_[item_.soldTo].reference);
  }

  void Group() {
    text_.Text("ItemDesc", item_.description);
    text_.Boolean("IsPrintItemsInGroup", item_.members.empty());
    for (const GroupMember& member : item_.members) {
      text_.Open("ItemGroupLine");
      text_.Block("ItemRef", list_.items[member.item].reference);
      text_.Number("Quantity", member.quantity);
      text_.Close("ItemGroupLine");
    }
  }

  const std::string& Vendor() const { return people_.vendors[index_ % people_.vendors.size()].reference; }

  const ItemList& list_;
  std::size_t index_;
  const Item& item_;
  const ChartOfAccounts& accounts_;
  const People& people_;
  ElementText text_;
};

}  // namespace

std::string ItemText(const ItemList& list, std::size_t item, const ChartOfAccounts& accounts,
                     const People& people) {
  return ItemWriter(list, item, accounts, people).Write();
}

}  // namespace krnqb::sample_company
