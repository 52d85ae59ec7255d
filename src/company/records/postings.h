#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "company/records/element_tree.h"
#include "company/records/kinds.h"

namespace krnqb::company {

/// The target of a posting. The accounts of an item are looked up when a report is computed, so items may be
/// loaded after the transactions that use them, or change.
enum class PostingTarget {
  Account,
  BoughtItem,  ///< an item's expense side
  SoldItem     ///< an item's income side and its cost of sale
};

/// An amount that a transaction posts.
struct Posting {
  PostingTarget target = PostingTarget::Account;
  std::string key;          ///< ListID of the account or item
  std::int64_t amount = 0;  ///< in hundredths of the currency; a debit is positive, a credit negative
  double quantity = 0;      ///< of a sold item, how many were sold; otherwise 0
};

/// Collects the postings of a purchase, a sale, or a credit for one. Amounts are in hundredths, with the sign
/// of the transaction's record.
class PostingList {
 public:
  /// `transaction` must be a kind that has lines and a total: a bill, a check, a charge, an item receipt, an
  /// invoice, a sales receipt, or a credit for one of them.
  explicit PostingList(const RecordKind& transaction);

  /// Adds a line with an account.
  void AddAccountLine(std::string account, std::int64_t amount);
  /// Adds a line with an item. `quantity` is used only in sales.
  void AddItemLine(std::string item, std::int64_t amount, double quantity);
  /// Adds the transaction's total, posted to the account it is paid from, owed to, deposited to or due from.
  void AddTotal(std::string account, std::int64_t amount);

  std::size_t Count() const noexcept { return postings_.size(); }
  std::vector<Posting> Take() { return std::move(postings_); }

 private:
  bool isSale_;
  int lineSide_;  // 1 if a line is a debit, -1 if it is a credit
  std::vector<Posting> postings_;
};

/// A posting and where the record has it.
struct PostedLine {
  Posting posting;
  /// The line, such as an ExpenseLineRet or a JournalDebitLine; empty for a total or a discount. The line of
  /// a ChargeRet is the record itself.
  RecordElement line;
};

/// Returns the postings of a transaction's record. A pending sale has none.
///
/// Purchases, sales and credits for them: one for each line with an amount and an account or item, lines
/// inside groups included, and one for the total. A line without a quantity counts as one piece. Sales tax is
/// not posted, because records do not name its account.
///
/// A journal entry: its lines. A deposit: its lines, the cash taken back, and the total. A payment: the
/// amount paid, the discounts, and what both settle. An inventory adjustment: each change of value, to the
/// item's asset account and against the adjustment's account.
std::vector<PostedLine> ReadPostedLines(const RecordElement& transaction);

/// Returns the same postings without their lines.
std::vector<Posting> ReadPostings(const RecordElement& transaction);

}  // namespace krnqb::company
