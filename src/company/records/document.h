#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "company/records/item_accounts.h"
#include "company/records/kinds.h"
#include "company/records/postings.h"
#include "company/records/texts.h"
#include "krnqb/xml_element.h"

namespace krnqb::company {

/// A record with what it is found and ordered by. What its kind does not have is empty.
struct CompanyRecord {
  const RecordKind* kind = nullptr;
  std::string key;          ///< ListID or TxnID; empty for a setting
  std::string parentKey;    ///< the ListID of the list entry above it
  std::string accountType;  ///< of an account
  std::string date;         ///< of a transaction, year-month-day
  RecordText text;
  std::vector<Posting> postings;          ///< of a transaction
  std::vector<ItemAccount> itemAccounts;  ///< of an item
};

/// Takes records one by one.
using RecordReceiver = std::function<void(CompanyRecord&&)>;

/// The record that an element is. Error `company_error::cannotParse` when it is none, or lacks what its kind
/// must have: ListID or TxnID, an account's type, a transaction's date.
CompanyRecord ReadRecord(const XmlElement& element);

/// Hands the records of a qbXML response document to `receive`, in the document's order. `bytes` are in the
/// encoding that the document declares. Answers to `HostQueryRq` are passed over: they tell of a program, not
/// of a company. Error `company_error::cannotParse` at the first thing that is wrong; its description names
/// the document, the line and the reason.
void ReadDocument(std::string_view documentName, std::string_view bytes, const RecordReceiver& receive);

}  // namespace krnqb::company
