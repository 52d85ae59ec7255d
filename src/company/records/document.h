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

/// Receives records one by one.
using RecordReceiver = std::function<void(CompanyRecord&&)>;

/// Receives the element name of each record that company files cannot store.
using PassedOverReceiver = std::function<void(std::string_view element)>;

/// Reads the record in an element. Throws Error `company_error::cannotParse` if it is not a record or lacks a
/// required field: ListID or TxnID, an account's type, a transaction's date.
CompanyRecord ReadRecord(const XmlElement& element);

/// Passes the records of a qbXML response document to `receive`, in document order. `bytes` are in the
/// encoding that the document declares. Skips answers to `HostQueryRq`, which describe a program and not a
/// company. Records of a kind that company files cannot store are passed over and reported to `passOver`; if
/// it is empty, they are faults. Throws Error `company_error::cannotParse` at the first fault; the
/// description names the document, the line and the reason.
void ReadDocument(std::string_view documentName, std::string_view bytes, const RecordReceiver& receive,
                  const PassedOverReceiver& passOver);

}  // namespace krnqb::company
