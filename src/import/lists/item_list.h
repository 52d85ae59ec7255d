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

/// The side of an item that a transaction line posts to.
enum class ItemSide : std::int16_t {
  Income = 1,  ///< what its sale posts to
  Expense = 4  ///< what its purchase posts to
};

/// The answer that lists the company's items (`ItemListDocument`), with what has been looked up in it: the
/// list never changes.
class ItemList {
 public:
  ItemList() = default;
  explicit ItemList(XmlElement answer) : answer_(std::move(answer)) {}

  const XmlElement& Element() const noexcept { return answer_; }

  /// The id of the account that an item posts to, or the empty text. For the income side of an inventory item
  /// that has a cost-of-goods account and an average cost, a cost-of-goods marker instead (see
  /// `BookCostOfSale`). A failure is told to the observer and gives the empty text.
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

/// The cost-of-goods marker: an XML text with the cost-of-goods account, the income account ("workid") and
/// the average cost as it stands in the item's record.
std::string CostOfGoodsMarker(std::string_view costAccountId, std::string_view incomeAccountId,
                              std::string_view averageCost);

/// Whether an account text is a cost-of-goods marker.
bool IsCostOfGoodsMarker(std::string_view account) noexcept;

}  // namespace krnqb
