#include "sample_company/items.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "sample_company/names.h"

namespace krnqb::sample_company {
namespace {

using enum ItemKind;

// Kinds of the items that every company has; without inventory those are goods that are not kept in stock.
// The group and the subtotal that expenses are invoiced with come on top.
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
// The item list was begun after the other lists.
constexpr std::int64_t secondsAfterAccounts = std::int64_t{90} * 24 * 3600;

class ItemMaker {
 public:
  ItemMaker(const GeneratorSettings& settings, const ChartOfAccounts& chart,
            const AccountChoices& accountChoices, std::int64_t listBegun, Random& randomChoices)
      : features(settings.features),
        accounts(chart),
        choices(accountChoices),
        begun(listBegun + secondsAfterAccounts),
        random(randomChoices) {}

  ItemList Make(std::int64_t count) {
    AddParticularItems();
    for (const ItemKind kind : commonKinds) Add(kind);
    while (static_cast<std::int64_t>(list.items.size()) < count) Add(random.Pick(furtherKinds));
    return std::move(list);
  }

 private:
  void AddParticularItems() {
    Item& permit = New(OtherCharge, "Permit Fee");
    permit.hasSingleAccount = true;
    permit.soldTo = accounts.Of(AccountRole::Permits);
    permit.boughtTo = permit.soldTo;
    permit.price = 9500;
    list.charges.push_back(Last());
    list.bought.push_back(Last());

    Item& materials = New(NonInventory, "Job Materials");
    materials.hasSingleAccount = true;
    materials.soldTo = random.Pick(choices.subExpenses);
    materials.boughtTo = materials.soldTo;
    materials.price = 4200;
    list.bought.push_back(Last());

    Item& payment = New(OtherCharge, "Payment on Account");
    payment.hasSingleAccount = true;
    payment.soldTo = accounts.Of(AccountRole::Receivable);
    list.payment = Last();

    if (!features.billableExpenses) return;
    New(Subtotal, "Reimb Subt").description = "Reimbursable expenses subtotal";
    New(Group, "Reimb Group").description = "Total reimbursable expenses";
    list.billedCosts = Last();
  }

  void Add(ItemKind kind) {
    switch (kind) {
      case Service:
        AddService();
        break;
      case Inventory:
        if (features.inventory) {
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
    const bool isSubcontracted = random.Chance(40);
    Item& service = NewOrBelow(Service, list.services, std::string(random.Pick(ServiceNames())));
    service.price = random.Between(35, 95) * 100;
    Sell(service);
    service.hasSingleAccount = !isSubcontracted;
    if (isSubcontracted) Buy(service, random.Between(60, 85));
    list.services.push_back(Last());
  }

  void AddGoods() {
    Item& goods = NewOrBelow(NonInventory, list.goods, GoodsName());
    goods.price = random.Between(900, 30'000);
    Sell(goods);
    Buy(goods, random.Between(50, 75));
    list.goods.push_back(Last());
  }

  void AddCharge() {
    Item& charge = NewOrBelow(OtherCharge, list.charges, std::string(random.Pick(ChargeNames())));
    charge.hasSingleAccount = true;
    charge.price = random.Between(15, 120) * 100;
    Sell(charge);
    // A charge belongs to all kinds of sales alike: to one parent after the other.
    const std::vector<std::size_t>& parents = choices.incomeParents;
    if (!parents.empty()) charge.soldTo = parents[chargesMade++ % parents.size()];
    list.charges.push_back(Last());
  }

  void AddInventory() {
    Item& stocked = NewOrBelow(Inventory, list.inventory, GoodsName());
    stocked.price = random.Between(300, 18'000);
    Sell(stocked);
    stocked.boughtTo = accounts.Of(AccountRole::Inventory);
    stocked.costAccount = random.Pick(choices.costs);
    stocked.cost = stocked.price * random.Between(42, 62) / 100;
    stocked.averageCost = stocked.cost * random.Between(94, 98) / 100;  // prices have risen since
    stocked.reorderPoint = random.Between(2, 12) * 10;
    stocked.stock = 2 * stocked.reorderPoint;
    list.inventory.push_back(Last());
  }

  void AddDiscount() {
    Item& discount = New(Discount, "Discount");
    discount.discountPercent = random.Pick(customaryDiscounts);
    discount.soldTo = accounts.Of(AccountRole::Discounts);
    discount.description = fmt::format("{} % off", discount.discountPercent);
    list.discounts.push_back(Last());
  }

  // Members can be bought and sold, so that the group can too.
  void AddGroup() {
    const std::int64_t size = random.Between(2, mostMembers);
    Item& group = New(Group, fmt::format("{} Set", random.Pick(GoodsMaterials())));
    for (std::int64_t attempt = 0; attempt < size; ++attempt) {
      const bool isStocked = !list.inventory.empty() && random.Chance(percentStockedMembers);
      const GroupMember member{random.Pick(isStocked ? list.inventory : list.goods), random.Between(1, 3)};
      const bool isNew =
          std::ranges::find(group.members, member.item, &GroupMember::item) == group.members.end();
      if (isNew) group.members.push_back(member);
    }
    list.groups.push_back(Last());
  }

  void Sell(Item& item) {
    const bool toParent = !choices.incomeParents.empty() && random.Chance(percentToParents);
    item.soldTo = random.Pick(toParent ? choices.incomeParents : choices.incomes);
  }

  void Buy(Item& item, std::int64_t percentOfPrice) {
    const bool toParent = !choices.expenseParents.empty() && random.Chance(percentToParents);
    item.boughtTo = random.Pick(toParent ? choices.expenseParents : choices.subExpenses);
    item.cost = item.price * percentOfPrice / 100;
    list.bought.push_back(Last());
  }

  std::string GoodsName() {
    const std::string_view material = random.Pick(GoodsMaterials());
    return fmt::format("{} {}", material, random.Pick(GoodsNames()));
  }

  Item& NewOrBelow(ItemKind kind, const std::vector<std::size_t>& ofKind, const std::string& name) {
    if (ofKind.empty() || !random.Chance(percentBelowAnother)) return New(kind, name);
    const std::size_t parent = random.Pick(ofKind);
    if (list.items[parent].parent || list.items[parent].kind != kind) return New(kind, name);
    return New(kind, random.Pick(VariantNames()), parent);
  }

  Item& New(ItemKind kind, std::string_view name, std::optional<std::size_t> parent = std::nullopt) {
    const std::string above = parent ? list.items[*parent].fullName : std::string();
    Item item;
    item.kind = kind;
    item.parent = parent;
    item.name = names.Take(above, name);
    item.fullName = parent ? fmt::format("{}:{}", above, item.name) : item.name;
    item.description = Escaped(item.fullName);
    item.listId = ListIdText(static_cast<std::int64_t>(list.items.size()) + 1, begun);
    item.created = EntryTime(static_cast<std::int64_t>(list.items.size()) + 1, begun);
    item.reference = ReferenceLines(item.listId, item.fullName);
    return list.items.emplace_back(std::move(item));
  }

  std::size_t Last() const { return list.items.size() - 1; }

  CompanyFeatures features;
  const ChartOfAccounts& accounts;
  const AccountChoices& choices;
  std::int64_t begun;
  Random& random;
  ItemList list;
  UniqueNames names;
  std::size_t chargesMade = 0;
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
