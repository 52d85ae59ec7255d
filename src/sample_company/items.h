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
  std::string reference;     ///< the lines that refer to it
  std::int64_t created = 0;  ///< when it came into the list, in seconds since 1970
  std::string description;   ///< escaped
  Cents price = 0;
  Cents cost = 0;  ///< what the vendor asks now; 0 when the item is not bought
  Cents averageCost = 0;
  std::int64_t discountPercent = 0;
  std::size_t soldTo = 0;               ///< index of the account that a sale is posted to
  std::optional<std::size_t> boughtTo;  ///< index of the account of a purchase; none when it is not bought
  std::size_t costAccount = 0;          ///< of an inventory item
  std::int64_t stock = 0;               ///< pieces on hand
  std::int64_t reorderPoint = 0;
  bool isOnOrder = false;
  std::vector<GroupMember> members;
  bool hasSingleAccount = false;  ///< sold or bought, not both
};

/// The items of a company. Items are known by their index.
struct ItemList {
  std::vector<Item> items;
  std::vector<std::size_t> services;
  std::vector<std::size_t> goods;  ///< not kept in stock
  std::vector<std::size_t> charges;
  std::vector<std::size_t> inventory;
  std::vector<std::size_t> bought;  ///< those that can be bought, inventory excluded
  std::vector<std::size_t> discounts;
  std::vector<std::size_t> groups;         ///< of items that are both bought and sold
  std::size_t payment = 0;                 ///< the charge that stands for a payment on account
  std::optional<std::size_t> billedCosts;  ///< the group in which expenses are invoiced
};

/// A piece's cost or price, at a level of prices. What is kept in stock is always bought at its average cost,
/// which so stays what it is.
Cents CostOf(const Item& item, std::int64_t pricePermille);
Cents PriceOf(const Item& item, std::int64_t pricePermille);

/// As many items as wanted, at least `GeneratorBounds::leastItems`.
ItemList MakeItems(const GeneratorSettings& settings, const ChartOfAccounts& accounts,
                   const AccountChoices& choices, std::int64_t begun, Random& random);

}  // namespace krnqb::sample_company
