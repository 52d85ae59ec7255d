#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "xml/text_arena.h"

namespace krnqb {

/// One line of a transaction as an answer tells it. Texts are the elements' texts as they stand; one that is
/// absent is told from one that is empty.
struct TransactionLine {
  using Field = std::optional<std::string_view>;

  std::string_view element;          ///< such as "ExpenseLineRet"
  Field amount;                      ///< Amount
  Field quantity;                    ///< Quantity
  Field accountId;                   ///< the ListID of its first AccountRef
  Field itemId;                      ///< the ListID of its first ItemRef
  Field anyAccountId = {};           ///< the first ListID in any of its AccountRefs
  Field anyItemId = {};              ///< the first ListID in any of its ItemRefs
  Field itemGroupId;                 ///< the ListID of its first ItemGroupRef
  Field parentItemGroupId;           ///< the ListID of the parent element's first ItemGroupRef
  bool hasCustomer = false;          ///< whether the line has a CustomerRef
  Field customerId;                  ///< the first ListID in any of its CustomerRefs
  Field parentCustomerId;            ///< its parent's
  Field grandparentCustomerId;       ///< its parent's parent's
  std::string_view transactionId;    ///< TxnID of its transaction; empty when there is none
  std::string_view transactionDate;  ///< TxnDate of its transaction, year-month-day; empty when there is none
  bool insideItemGroup = false;      ///< a purchase's line that stands in an item group
};

/// The lines of one answer in document order, and the texts that they point to.
struct TransactionLines {
  std::vector<TransactionLine> lines;
  TextArena texts;
};

}  // namespace krnqb
