#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "company/records/kinds.h"
#include "krnqb/xml_element.h"

namespace krnqb::company {

/// What an amount is posted to. An item stands for the accounts that the item list names for it when a report
/// is computed, so that items may come after the transactions that use them, or change.
enum class PostingTarget {
  Account,
  BoughtItem,  ///< an item's expense side
  SoldItem     ///< an item's income side, and what selling it costs
};

/// An amount that a transaction moves.
struct Posting {
  PostingTarget target = PostingTarget::Account;
  std::string key;          ///< ListID of the account or item
  std::int64_t amount = 0;  ///< in hundredths of the currency; a debit is positive, a credit negative
  double quantity = 0;      ///< of a sold item, how many were sold; otherwise 0
};

/// Collects the postings of a transaction. Amounts are in hundredths and have the sign that they have in the
/// transaction's record.
class PostingList {
 public:
  /// `transaction` is one of the kinds of transactions.
  explicit PostingList(const RecordKind& transaction);

  /// A line that names its account.
  void AddAccountLine(std::string account, std::int64_t amount);
  /// A line that names its item. `quantity` matters for items that are sold.
  void AddItemLine(std::string item, std::int64_t amount, double quantity);
  /// What the whole transaction comes to, at the account that it is paid from, owed to, received in or due
  /// from.
  void AddTotal(std::string account, std::int64_t amount);

  std::vector<Posting> Take() { return std::move(postings_); }

 private:
  bool isSale_;
  std::vector<Posting> postings_;
};

/// The postings of a transaction's record: of each line that has an amount and an account or an item, lines
/// inside groups included, and of the whole. A line without a quantity counts as one piece. A sale that is
/// pending posts nothing. Sales tax is posted nowhere: a record does not name the account that owes it.
std::vector<Posting> ReadPostings(const XmlElement& transaction);

}  // namespace krnqb::company
