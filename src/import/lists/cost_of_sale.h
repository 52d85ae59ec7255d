#pragma once

#include <string>
#include <string_view>
#include <variant>

namespace krnqb {

/// An account's ListID.
using AccountId = std::string;

/// What the sale of an inventory item books: its income, and its average cost as cost of goods sold.
struct CostOfSale {
  AccountId costAccount;
  AccountId incomeAccount;
  std::string averageCost;  ///< the text of the item's record

  bool operator==(const CostOfSale&) const = default;
};

/// What an item's sale posts to. An account id that begins with "<COGS" is a marker, see below.
using SalePosting = std::variant<AccountId, CostOfSale>;

// The cost-of-goods marker: a cost of sale as one XML element's text. It is kept where only a text can be,
// and it is what counts where a part holds a character that the element's text changes or does not allow.

/// Returns the marker of a cost of sale, its parts put in as they are, not escaped.
std::string CostOfGoodsMarker(const CostOfSale& sale);

/// Returns whether an account id is a marker: whether it begins with "<COGS".
bool IsCostOfGoodsMarker(std::string_view account) noexcept;

/// Parses a marker; a missing attribute is the empty text. Throws Error 91 if it does not parse.
CostOfSale ReadCostOfGoodsMarker(const std::string& marker);

/// Returns the posting of a cost of sale: the parts if the marker would read back as just these, else the
/// marker.
SalePosting PostingOf(const CostOfSale& sale);

/// Returns a posting as one text: the account id or the marker.
std::string PostingText(const SalePosting& posting);

}  // namespace krnqb
