#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "sample_company/account_choices.h"
#include "sample_company/accounts.h"
#include "sample_company/generator.h"
#include "sample_company/random.h"
#include "sample_company/text.h"

namespace krnqb::sample_company {

enum class ItemKind { Service, NonInventory, OtherCharge, Inventory, Subtotal, Discount, Group };

struct GroupMember {
  std::size_t item = 0;
  std::int64_t quantity = 0;
};

struct Item {
  ItemKind kind = ItemKind::Service;
  std::string listId;
  std::string name;
  std::string fullName;
  std::optional<std::size_t> parent;
  std::string reference;     ///< the elements of a reference to it
  std::int64_t created = 0;  ///< creation time, in seconds since 1970
  std::string description;   ///< escaped
  Cents price = 0;
  Cents cost = 0;  ///< the vendor's current price; 0 if the item is not bought
  Cents averageCost = 0;
  std::int64_t discountPercent = 0;
  std::size_t soldTo = 0;               ///< index of the account of a sale
  std::optional<std::size_t> boughtTo;  ///< index of the account of a purchase, if it is bought
  std::size_t costAccount = 0;          ///< of an inventory item
  std::int64_t stock = 0;               ///< pieces on hand
  std::int64_t reorderPoint = 0;
  bool isOnOrder = false;
  std::vector<GroupMember> members;
  bool hasSingleAccount = false;  ///< sold or bought, but not both
};

/// The items of a company. Items are identified by index.
struct ItemList {
  std::vector<Item> items;
  std::vector<std::size_t> services;
  std::vector<std::size_t> goods;  ///< not in inventory
  std::vector<std::size_t> charges;
  std::vector<std::size_t> inventory;
  std::vector<std::size_t> bought;  ///< items that can be bought, without inventory
  std::vector<std::size_t> discounts;
  std::vector<std::size_t> groups;         ///< of items that are bought and sold
  std::size_t payment = 0;                 ///< the charge used as payment on account
  std::optional<std::size_t> billedCosts;  ///< the group in which expenses are invoiced
};

/// Return the cost or price of one piece at a price level. Inventory is always bought at its average cost,
/// which therefore stays constant.
Cents CostOf(const Item& item, std::int64_t pricePermille);
Cents PriceOf(const Item& item, std::int64_t pricePermille);

/// Returns as many items as requested, at least `GeneratorBounds::leastItems`.
ItemList MakeItems(const GeneratorSettings& settings, const ChartOfAccounts& accounts,
                   const AccountChoices& choices, std::int64_t begun, Random& random);

}  // namespace krnqb::sample_company
