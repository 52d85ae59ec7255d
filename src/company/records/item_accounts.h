#pragma once

#include <optional>
#include <string>
#include <vector>

#include "company/records/postings.h"
#include "krnqb/xml_element.h"

namespace krnqb::company {

/// An account that what is posted to an item goes to.
struct ItemAccount {
  PostingTarget target = PostingTarget::SoldItem;  ///< which of the item's postings; never `Account`
  std::string account;                             ///< ListID
  /// Hundredths of the currency that each piece sold moves, a debit positive. Nothing: the amount of the
  /// posting goes there as it is.
  std::optional<double> unitCost;
};

/// The accounts of an item's record. Buying posts to the item's expense account, to its single account or,
/// when it is kept in stock, to its asset account; selling to its income account, to its single account, or
/// to where a payment is deposited. What is sold from the stock moves its average cost from the asset account
/// to that of the cost of goods.
std::vector<ItemAccount> ReadItemAccounts(const XmlElement& item);

}  // namespace krnqb::company
