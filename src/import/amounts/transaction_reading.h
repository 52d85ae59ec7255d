#pragma once

#include <string_view>

#include "import/amounts/transaction_line.h"
#include "krnqb/observer.h"
#include "krnqb/variant.h"

namespace krnqb {

/// Which elements of an answer are lines.
enum class LinePlaces {
  DirectChildren,  ///< "ExpenseLineRet" and "ItemLineRet" that are children of a transaction (bill, check or
                   ///< charge); those inside its item groups are read too, marked as such
  Anywhere         ///< every element of the line's name in the whole answer
};

struct LineSelection {
  std::string_view responseName;  ///< such as "BillQueryRs"; its children are the transactions
  LinePlaces places;
  std::string_view lineName;  ///< for `Anywhere`: such as "InvoiceLineRet"
};

/// Reads an answer's lines in one pass. An answer that is no document, or that holds no element called as the
/// response is, has none. Tells the observer what `AnswerElement` tells.
TransactionLines ReadTransactionLines(const Variant& answer, const LineSelection& selection,
                                      Observer& observer, const Place& place);

}  // namespace krnqb
