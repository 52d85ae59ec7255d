#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "import/lists/cost_of_sale.h"
#include "krnqb/observer.h"
#include "krnqb/xml_element.h"
#include "support/text_map.h"
#include "xml/bounded_paths.h"
#include "xml/index.h"

namespace krnqb {

/// The QuickBooks response that lists the company's items (`ItemListDocument`). It never changes, so results
/// of lookups are cached; copies share the cache.
class ItemList {
 public:
  ItemList() = default;
  explicit ItemList(XmlElement answer) : answer_(std::move(answer)) {}

  const XmlElement& Element() const noexcept { return answer_; }

  /// Returns what an item's sale posts to: the id of an account, empty if the item has no account, or a cost
  /// of sale for an item that also has a cost-of-goods account and an average cost. A failure is reported to
  /// the observer and returns the empty id.
  const SalePosting& IncomePosting(std::string_view itemId, Observer& observer) const;

  /// Returns the id of the account that an item's purchase posts to, empty if the item has none. A failure is
  /// reported to the observer and returns the empty id.
  const AccountId& ExpenseAccount(std::string_view itemId, Observer& observer) const;

  /// Returns the full name of an item in the list or of an account to which one refers, or its name if it has
  /// no full name; empty if the list does not contain the id or the id contains a double quote.
  std::string FullNameOf(std::string_view listId) const;

 private:
  struct LookUps {
    explicit LookUps(const XmlElement& answer) : index(answer, "ListID") {}
    XmlTextIndex index;
    BoundedPaths paths;
    TextMap<SalePosting> incomePostings;
    TextMap<AccountId> expenseAccounts;
  };

  template <typename Found>
  const Found& LookUp(std::string_view itemId, TextMap<Found> LookUps::*kept,
                      Found (*read)(const XmlElement& item), Observer& observer) const;
  XmlElement FindItem(const std::string& itemId) const;

  XmlElement answer_;
  mutable std::shared_ptr<LookUps> lookUps_;
};

}  // namespace krnqb
