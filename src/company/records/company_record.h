#pragma once

#include <string>
#include <vector>

#include "company/records/element_tree.h"
#include "company/records/item_accounts.h"
#include "company/records/kinds.h"
#include "company/records/postings.h"
#include "company/records/texts.h"

namespace krnqb::company {

/// A record with its keys and sort criteria. Fields that its kind does not have are empty.
struct CompanyRecord {
  const RecordKind* kind = nullptr;
  std::string key;          ///< ListID or TxnID; empty for a setting
  std::string parentKey;    ///< ListID of the parent list entry
  std::string accountType;  ///< of an account
  std::string date;         ///< of a transaction, YYYY-MM-DD
  RecordText text;
  std::vector<Posting> postings;          ///< of a transaction
  std::vector<ItemAccount> itemAccounts;  ///< of an item
};

/// Returns the record that an element is, without its text. Throws Error `company_error::cannotParse` if it
/// is not a record or lacks a required field: ListID or TxnID, an account's type, a transaction's date.
CompanyRecord ReadRecord(const RecordElement& element);

/// Returns a text as a message shows it: at most its first 40 bytes. A document may hold gigabytes.
std::string Shown(std::string_view text);

}  // namespace krnqb::company
