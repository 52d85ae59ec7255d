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

/// Keeps a company's postings and the accounts of its items, within a transaction of the caller's. The
/// database must outlive it.
class LedgerWriter {
 public:
  explicit LedgerWriter(const Database& database);

  /// Replaces what is posted of the record with this id, whose date is year-month-day.
  void PutPostings(std::int64_t recordId, std::string_view date, std::span<const Posting> postings);
  /// Replaces the accounts of an item.
  void PutItemAccounts(std::string_view item, std::span<const ItemAccount> accounts);

 private:
  Statement removePostings_;
  Statement insertPosting_;
  Statement removeItemAccounts_;
  Statement insertItemAccount_;
};

/// Amounts in hundredths, a debit positive, by the ListID of the account. An account without a posting is not
/// among them.
using PostedAmounts = std::map<std::string, std::int64_t, std::less<>>;

/// Adds up the postings to the accounts of one type. The database must outlive it.
class LedgerReader {
 public:
  LedgerReader(const Database& companyDatabase, std::string_view type);

  /// Of the days from `firstDay` to `lastDay`, both year-month-day, the ends included.
  PostedAmounts Between(std::string_view firstDay, std::string_view lastDay);
  /// Of all days after `day`.
  PostedAmounts After(std::string_view day);

 private:
  std::string type_;
  Statement between_;
  Statement after_;
};

/// The days, year-month-day, of a company's first and last transaction.
struct LedgerDays {
  std::string first;
  std::string last;
};

/// Nothing when the company has no transactions.
std::optional<LedgerDays> ReadLedgerDays(const Database& database);

}  // namespace krnqb::company
