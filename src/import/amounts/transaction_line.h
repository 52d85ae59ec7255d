#pragma once

#include <string_view>

#include "xml/optional_text.h"

namespace krnqb {

/// One line of a transaction in a response. Fields are the untrimmed texts of elements; a missing element is
/// missing, an empty one the empty text.
struct TransactionLine {
  using Field = OptionalText;

  std::string_view element;           ///< such as "ExpenseLineRet"
  Field amount;                       ///< Amount
  Field quantity;                     ///< Quantity
  Field accountId;                    ///< the ListID of its first AccountRef
  Field itemId;                       ///< the ListID of its first ItemRef
  Field anyAccountId = {};            ///< the first ListID in all of its AccountRefs
  Field anyItemId = {};               ///< the first ListID in all of its ItemRefs
  Field itemGroupId;                  ///< the ListID of its first ItemGroupRef
  Field parentItemGroupId;            ///< the ListID of the parent element's first ItemGroupRef
  bool hasCustomer = false;           ///< whether the line has a CustomerRef
  Field customerId;                   ///< the first ListID in all of its CustomerRefs
  Field parentCustomerId;             ///< the same of the parent element
  Field grandparentCustomerId;        ///< the same of the parent's parent element
  std::string_view accountName = {};  ///< the FullName beside `accountId`; empty if missing
  std::string_view itemName = {};  ///< the FullName of its item, or else of its item group; empty if missing
  std::string_view customerName = {};  ///< the FullName of the nearest customer; empty if missing
  std::string_view transactionId;      ///< TxnID of its transaction; empty if missing
  std::string_view transactionDate;    ///< TxnDate of its transaction, year-month-day; empty if missing
  bool insideItemGroup = false;        ///< whether it is a purchase line inside an item group
  // Read for bookings only; empty if missing.
  std::string_view lineId = {};           ///< its TxnLineID
  std::string_view referenceNumber = {};  ///< RefNumber of its transaction
  std::string_view partyName = {};        ///< the FullName of its transaction's vendor, payee or customer
};

}  // namespace krnqb
