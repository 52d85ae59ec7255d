#include "sample_company/items.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "sample_company/names.h"

namespace krnqb::sample_company {
namespace {

using enum ItemKind;

// The kinds of the items that every company has; without inventory, inventory items become non-inventory
// items. The group and subtotal for invoiced expenses are additional.
constexpr std::array commonKinds = {Service,   Service,     Service,  NonInventory, NonInventory, Inventory,
                                    Inventory, OtherCharge, Discount, Group,        Group};
constexpr std::int64_t particularItems = 5;
static_assert(commonKinds.size() + particularItems == static_cast<std::size_t>(GeneratorBounds::leastItems));

constexpr std::array<ItemKind, 20> furtherKinds = {
    Service,      Service,      Service,     Service,     Service,   NonInventory, NonInventory,
    NonInventory, NonInventory, Inventory,   Inventory,   Inventory, Inventory,    Inventory,
    Inventory,    Inventory,    OtherCharge, OtherCharge, Group,     Group};

constexpr std::array<std::int64_t, 3> customaryDiscounts = {5, 10, 15};
constexpr unsigned percentBelowAnother = 20;
constexpr unsigned percentToParents = 10;
constexpr unsigned percentStockedMembers = 60;
constexpr std::int64_t mostMembers = 4;
// The item list is begun after the other lists.
constexpr std::int64_t secondsAfterAccounts = std::int64_t{90} * 24 * 3600;

class ItemMaker {
 public:
  ItemMaker(const GeneratorSettings& settings, const ChartOfAccounts& chart, const AccountChoices& choices,
            std::int64_t listBegun, Random& random)
      : features_(settings.features),
        accounts_(chart),
        choices_(choices),
        begun_(listBegun + secondsAfterAccounts),
        random_(random) {}

  ItemList Make(std::int64_t count) {
    AddParticularItems();
    for (const ItemKind kind : commonKinds) Add(kind);
    while (static_cast<std::int64_t>(list_.items.size()) < count) Add(random_.Pick(furtherKinds));
    return std::move(list_);
  }

 private:
  void AddParticularItems() {
    Item& permit = New(OtherCharge, "Permit Fee");
    permit.hasSingleAccount = true;
    permit.soldTo = accounts_.Of(AccountRole::Permits);
    permit.boughtTo = permit.soldTo;
    permit.price = 9500;
    list_.charges.push_back(Last());
    list_.bought.push_back(Last());

    Item& materials = New(NonInventory, "Job Materials");
    materials.hasSingleAccount = true;
    materials.soldTo = random_.Pick(choices_.subExpenses);
    materials.boughtTo = materials.soldTo;
    materials.price = 4200;
    list_.bought.push_back(Last());

    Item& payment = New(OtherCharge, "Payment on Account");
    payment.hasSingleAccount = true;
    payment.soldTo = accounts_.Of(AccountRole::Receivable);
    list_.payment = Last();

    if (!features_.billableExpenses) return;
    New(Subtotal, "Reimb Subt").description = "Reimbursable expenses subtotal";
    New(Group, "Reimb Group").description = "Total reimbursable expenses";
    list_.billedCosts = Last();
  }

  void Add(ItemKind kind) {
    switch (kind) {
      case Service:
        AddService();
        break;
      case Inventory:
        if (features_.inventory) {
          AddInventory();
          break;
        }
        [[fallthrough]];
      case NonInventory:
        AddGoods();
        break;
      case OtherCharge:
        AddCharge();
        break;
      case Discount:
        AddDiscount();
        break;
      case Group:
        AddGroup();
        break;
      case Subtotal:
        break;
    }
  }

  void AddService() {
    const bool isSubcontracted = random_.Chance(40);
    Item& service = NewOrBelow(Service, list_.services, std::string(random_.Pick(ServiceNames())));
    service.price = random_.Between(35, 95) * 100;
    Sell(service);
    service.hasSingleAccount = !isSubcontracted;
    if (isSubcontracted) Buy(service, random_.Between(60, 85));
    list_.services.push_back(Last());
  }

  void AddGoods() {
    Item& goods = NewOrBelow(NonInventory, list_.goods, GoodsName());
    goods.price = random_.Between(900, 30'000);
    Sell(goods);
    Buy(goods, random_.Between(50, 75));
    list_.goods.push_back(Last());
  }

  void AddCharge() {
    Item& charge = NewOrBelow(OtherCharge, list_.charges, std::string(random_.Pick(ChargeNames())));
    charge.hasSingleAccount = true;
    charge.price = random_.Between(15, 120) * 100;
    Sell(charge);
    // Charges are assigned to all parents in turn.
    const std::vector<std::size_t>& parents = choices_.incomeParents;
    if (!parents.empty()) charge.soldTo = parents[chargesMade_++ % parents.size()];
    list_.charges.push_back(Last());
  }

  void AddInventory() {
    Item& stocked = NewOrBelow(Inventory, list_.inventory, GoodsName());
    stocked.price = random_.Between(300, 18'000);
    Sell(stocked);
    stocked.boughtTo = accounts_.Of(AccountRole::Inventory);
    stocked.costAccount = random_.Pick(choices_.costs);
    stocked.cost = stocked.price * random_.Between(42, 62) / 100;
    stocked.averageCost = stocked.cost * random_.Between(94, 98) / 100;  // prices have risen since then
    stocked.reorderPoint = random_.Between(2, 12) * 10;
    stocked.stock = 2 * stocked.reorderPoint;
    list_.inventory.push_back(Last());
  }

  void AddDiscount() {
    Item& discount = New(Discount, "Discount");
    discount.discountPercent = random_.Pick(customaryDiscounts);
    discount.soldTo = accounts_.Of(AccountRole::Discounts);
    discount.description = fmt::format("{} % off", discount.discountPercent);
    list_.discounts.push_back(Last());
  }

  // Members can be bought and sold, so the group can too.
  void AddGroup() {
    const std::int64_t size = random_.Between(2, mostMembers);
    Item& group = New(Group, fmt::format("{} Set", random_.Pick(GoodsMaterials())));
    for (std::int64_t attempt = 0; attempt < size; ++attempt) {
      const bool isStocked = !list_.inventory.empty() && random_.Chance(percentStockedMembers);
      const GroupMember member{random_.Pick(isStocked ? list_.inventory : list_.goods),
                               random_.Between(1, 3)};
      const bool isNew =
          std::ranges::find(group.members, member.item, &GroupMember::item) == group.members.end();
      if (isNew) group.members.push_back(member);
    }
    list_.groups.push_back(Last());
  }

  void Sell(Item& item) {
    const bool toParent = !choices_.incomeParents.empty() && random_.Chance(percentToParents);
    item.soldTo = random_.Pick(toParent ? choices_.incomeParents : choices_.incomes);
  }

  void Buy(Item& item, std::int64_t percentOfPrice) {
    const bool toParent = !choices_.expenseParents.empty() && random_.Chance(percentToParents);
    item.boughtTo = random_.Pick(toParent ? choices_.expenseParents : choices_.subExpenses);
    item.cost = item.price * percentOfPrice / 100;
    list_.bought.push_back(Last());
  }

  std::string GoodsName() {
    const std::string_view material = random_.Pick(GoodsMaterials());
    return fmt::format("{} {}", material, random_.Pick(GoodsNames()));
  }

  Item& NewOrBelow(ItemKind kind, const std::vector<std::size_t>& ofKind, const std::string& name) {
    if (ofKind.empty() || !random_.Chance(percentBelowAnother)) return New(kind, name);
    const std::size_t parent = random_.Pick(ofKind);
    if (list_.items[parent].parent || list_.items[parent].kind != kind) return New(kind, name);
    return New(kind, random_.Pick(VariantNames()), parent);
  }

  Item& New(ItemKind kind, std::string_view name, std::optional<std::size_t> parent = std::nullopt) {
    const std::string above = parent ? list_.items[*parent].fullName : std::string();
    Item item;
    item.kind = kind;
    item.parent = parent;
    item.name = names_.Take(above, name);
    item.fullName = parent ? fmt::format("{}:{}", above, item.name) : item.name;
    item.description = Escaped(item.fullName);
    item.listId = ListIdText(static_cast<std::int64_t>(list_.items.size()) + 1, begun_);
    item.created = EntryTime(static_cast<std::int64_t>(list_.items.size()) + 1, begun_);
    item.reference = ReferenceLines(item.listId, item.fullName);
    return list_.items.emplace_back(std::move(item));
  }

  std::size_t Last() const { return list_.items.size() - 1; }

  CompanyFeatures features_;
  const ChartOfAccounts& accounts_;
  const AccountChoices& choices_;
  std::int64_t begun_;
  Random& random_;
  ItemList list_;
  UniqueNames names_;
  std::size_t chargesMade_ = 0;
};

}  // namespace

Cents CostOf(const Item& item, std::int64_t pricePermille) {
  if (item.kind == ItemKind::Inventory) return item.averageCost;
  return (item.cost > 0 ? item.cost : item.price) * pricePermille / 1000;
}

Cents PriceOf(const Item& item, std::int64_t pricePermille) {
  return item.price * pricePermille / 1000;
}

ItemList MakeItems(const GeneratorSettings& settings, const ChartOfAccounts& accounts,
                   const AccountChoices& choices, std::int64_t begun, Random& random) {
  return ItemMaker(settings, accounts, choices, begun, random).Make(settings.items);
}

}  // namespace krnqb::sample_company
