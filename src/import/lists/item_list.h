#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

#include "krnqb/observer.h"
#include "krnqb/xml_element.h"
#include "xml/index.h"

namespace krnqb {

/// Which of an item's accounts is meant.
enum class ItemSide : std::int16_t {
  Income = 1,  ///< the account that a sale of the item posts to
  Expense = 4  ///< the account that a purchase of the item posts to
};

/// The QuickBooks response that lists the company's items. It never changes, so results of lookups are
/// cached; copies share the cache.
class ItemList {
 public:
  ItemList() = default;
  explicit ItemList(XmlElement answer) : answer_(std::move(answer)) {}

  const XmlElement& Element() const noexcept { return answer_; }

  /// Returns the id of the account that an item posts to, or the empty text if it has none. For the income
  /// side of an item with a cost-of-goods account and an average cost, returns a cost-of-goods marker instead
  /// (see `BookCostOfSale`). Reports an error to the observer and then returns the empty text.
  const std::string& ItemAccount(std::string_view itemId, ItemSide side, Observer& observer) const;

 private:
  struct LookUps {
    explicit LookUps(const XmlElement& answer) : index(answer, "ListID") {}
    XmlTextIndex index;
    std::unordered_map<std::string, std::string> incomeAccounts;
    std::unordered_map<std::string, std::string> expenseAccounts;
  };

  std::string FindAccount(const std::string& itemId, ItemSide side) const;

  XmlElement answer_;
  mutable std::shared_ptr<LookUps> lookUps_;
};

/// Returns the cost-of-goods marker: an XML text with the cost-of-goods account ("cogsid"), the income
/// account ("workid") and the average cost exactly as in the item's record.
std::string CostOfGoodsMarker(std::string_view costAccountId, std::string_view incomeAccountId,
                              std::string_view averageCost);

/// Returns whether an account text is a cost-of-goods marker.
bool IsCostOfGoodsMarker(std::string_view account) noexcept;

}  // namespace krnqb
