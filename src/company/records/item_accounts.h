#pragma once

#include <optional>
#include <string>
#include <vector>

#include "company/records/element_tree.h"
#include "company/records/postings.h"

namespace krnqb::company {

/// An account that receives an item's postings.
struct ItemAccount {
  PostingTarget target = PostingTarget::SoldItem;  ///< which side of the item; never `Account`
  std::string account;                             ///< ListID
  /// Hundredths of the currency posted per piece sold, debits positive. nullopt: the posting's own amount.
  std::optional<double> unitCost;
};

/// Returns the accounts of an item's record. A purchase posts to the item's expense account, its single
/// account or, for inventory, its asset account; a sale to its income account, its single account or the
/// account of a deposit. A sale of inventory also moves the average cost from the asset account to the cost
/// of goods sold account.
std::vector<ItemAccount> ReadItemAccounts(const RecordElement& item);

}  // namespace krnqb::company
