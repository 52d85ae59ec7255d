#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "support/exact_amount.h"

namespace krnqb::reconcile {

/// Why a plan's amount differs from the books, in the order in which causes are looked for.
enum class CauseCode : std::uint8_t {
  // The plan against what the last import wrote.
  AnotherPeriod,  ///< the last import was of other months
  NotImported,    ///< an amount that the last import did not write
  EditedSince,    ///< the plan was changed after the last import
  // What it wrote against what an import books now.
  RowTwice,         ///< a second row has the same account's amounts
  MisalignedRow,    ///< the amounts are in an actual row of another name
  DepreciationSum,  ///< the row "Depreciation" has the account's amounts
  NoRow,            ///< the account has no row, or its row lacks the cell
  NotAskedFor,      ///< the last import did not include the account
  BooksChanged,     ///< an import would write other amounts now
  // The bookings against the books.
  SpreadBalance,       ///< today's balance is divided over months
  ReportRowTwice,      ///< a report has the amount in two rows of the account
  KindNotRead,         ///< transactions of a kind that the import does not read
  TypeNotTaken,        ///< the import does not take such lines to accounts of that type
  ItemGroup,           ///< a purchase line of an item group
  ItemWithoutAccount,  ///< the item list has no account for the item
  PendingSale,         ///< a pending sale is not in the books yet
  BilledOnce,          ///< an expense that was billed to a customer is taken back
  BilledAgain,         ///< more is taken back than was an expense
  TextCut,             ///< an average cost, or a report's amount, could be read only in part
  QuantityAsOne,       ///< a quantity that is not a number counts as 1
  WithoutAmount,       ///< a line without an amount has a cost in the books
  OtherAccount,        ///< the books have the line in another account
  AverageCost,         ///< a sale costs today's average instead of the books' own
  // The ledger of the loaded documents against the books.
  NotLoaded,   ///< transactions of the books that are not among the loaded documents
  NotInBooks,  ///< loaded transactions that the books do not have
  Rounding     ///< less than half a cent, from adding up
};

/// Returns the stable word of a cause, such as "spread-balance".
std::string_view CauseWord(CauseCode code) noexcept;

/// Returns what a cause means, as part of a sentence: "today's balance, divided over months".
std::string_view CauseText(CauseCode code) noexcept;

/// A part of a difference. Amounts have the sign of plan less books.
struct Cause {
  CauseCode code = CauseCode::Rounding;
  std::string type = {};  ///< the transactions' type in the books, such as "Paycheck" (NotLoaded); else empty
  ExactAmount amount = {};
  std::vector<std::string> transactions = {};  ///< TxnIDs, each once, in the order in which they were found
};

}  // namespace krnqb::reconcile
