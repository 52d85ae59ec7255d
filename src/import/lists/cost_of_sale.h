#pragma once

#include <string>
#include <string_view>
#include <variant>

namespace krnqb {

/// An account's ListID.
using AccountId = std::string;

/// The accounts to which the sale of an inventory item posts, and the item's average cost.
struct CostOfSale {
  AccountId costAccount;
  AccountId incomeAccount;
  std::string averageCost;  ///< the text in the item's record

  bool operator==(const CostOfSale&) const = default;
};

/// What an item's sale posts to. An account id that begins with "<COGS" is a marker, see below.
using SalePosting = std::variant<AccountId, CostOfSale>;

// A cost-of-goods marker is a cost of sale in the form of an XML element's text. It is stored where only a
// text is possible. It also decides what is booked if a part contains a character that an unescaped attribute
// cannot hold or changes.

/// Returns the marker of a cost of sale. The parts are not escaped.
std::string CostOfGoodsMarker(const CostOfSale& sale);

/// Returns whether an account id is a marker: whether it begins with "<COGS".
bool IsCostOfGoodsMarker(std::string_view account) noexcept;

/// Parses a marker. A missing attribute becomes the empty text. Throws Error 91 if the marker is not
/// well-formed.
CostOfSale ReadCostOfGoodsMarker(const std::string& marker);

/// Returns the posting of a cost of sale: the cost of sale itself if its marker would read back unchanged,
/// otherwise the marker.
SalePosting PostingOf(const CostOfSale& sale);

/// Returns a posting as one text: the account id or the marker.
std::string PostingText(const SalePosting& posting);

}  // namespace krnqb
