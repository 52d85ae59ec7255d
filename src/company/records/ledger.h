#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "company/records/database.h"
#include "company/records/item_accounts.h"
#include "company/records/postings.h"

namespace krnqb::company {

/// Stores a company's postings and the accounts of its items, within the caller's transaction. The database
/// must outlive it.
class LedgerWriter {
 public:
  explicit LedgerWriter(const Database& database);

  /// Removes the postings of the record with this id.
  void RemovePostings(std::int64_t recordId);
  /// Adds the postings of a record that has none; `date` is YYYY-MM-DD.
  void AddPostings(std::int64_t recordId, std::string_view date, std::span<const Posting> postings);
  /// Replaces the accounts of an item.
  void PutItemAccounts(std::string_view item, std::span<const ItemAccount> accounts);

 private:
  Statement removePostings_;
  Statement insertPosting_;
  Statement removeItemAccounts_;
  Statement insertItemAccount_;
};

/// Amounts in hundredths, debits positive, by ListID of the account. Contains only accounts with postings.
using PostedAmounts = std::map<std::string, std::int64_t, std::less<>>;

/// Sums the postings to the accounts of one type. The database must outlive it.
class LedgerReader {
 public:
  LedgerReader(const Database& database, std::string_view type);

  /// Returns the sums from `firstDay` to `lastDay` inclusive, both YYYY-MM-DD.
  PostedAmounts Between(std::string_view firstDay, std::string_view lastDay);
  /// Returns the sums of all days after `day`.
  PostedAmounts After(std::string_view day);

 private:
  std::string type_;
  Statement between_;
  Statement after_;
};

/// The dates, YYYY-MM-DD, of a company's first and last transaction.
struct LedgerDays {
  std::string first;
  std::string last;
};

/// Returns nullopt if the company has no transactions.
std::optional<LedgerDays> ReadLedgerDays(const Database& database);

/// Which transactions to look for.
enum class TransactionChoice : std::uint8_t {
  Requested,  ///< of the kinds that are answered to requests for transactions
  All         ///< of every kind; summary reports add all of them up
};

/// Returns the months, YYYY-MM in increasing order, that have a transaction from `firstDay` to `lastDay`
/// inclusive, both YYYY-MM-DD.
std::vector<std::string> ReadTransactionMonths(const Database& database, std::string_view firstDay,
                                               std::string_view lastDay, TransactionChoice choice);

}  // namespace krnqb::company
