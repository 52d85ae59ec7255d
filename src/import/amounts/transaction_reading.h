#pragma once

#include <string_view>

#include "import/amounts/transaction_lines.h"
#include "krnqb/observer.h"
#include "krnqb/variant.h"

namespace krnqb {

/// Which elements of a response are lines.
enum class LinePlaces {
  DirectChildren,  ///< "ExpenseLineRet" and "ItemLineRet" that are children of a transaction (bill, check or
                   ///< charge) or of its item groups; the latter are marked `insideItemGroup`
  Anywhere         ///< every element with the line's name in the whole document
};

struct LineSelection {
  std::string_view responseName;  ///< the parent of the transactions, such as "BillQueryRs"
  LinePlaces places;
  std::string_view lineName;  ///< for `Anywhere` only, such as "InvoiceLineRet"
  bool forBookings = false;   ///< whether the fields for bookings are read too
};

/// Returns the lines of an answer, read in one pass; no lines if the answer is not a
/// well-formed text or has no element named `responseName`. Reports the same problems to the observer as
/// `AnswerElement`. The memory of `used`, lines of an earlier answer, is used again.
TransactionLines ReadTransactionLines(Variant answer, const LineSelection& selection, Observer& observer,
                                      const Place& place, TransactionLines used = {});

}  // namespace krnqb
