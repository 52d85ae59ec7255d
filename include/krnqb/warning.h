#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace krnqb {

/// What a warning is about. A warning changes nothing in an import: it reports where the plan differs from
/// the books although every rule was followed.
enum class WarningCode : std::uint8_t {
  UnsupportedProcessor,   ///< balances are requested of a processor of neither version 1 nor 2; no amount
                          ///< is read
  EmptyPeriod,            ///< the period has no transaction, or its reports have no amount
  BalanceSpread,          ///< an account's months are today's balance, divided evenly
  RowTwice,               ///< two planned rows receive one account's amounts
  TwinMisaligned,         ///< amounts land in an actual row with another name
  TwinMissing,            ///< amounts have no actual row
  ShortRow,               ///< a row has too few cells for the months
  NoRow,                  ///< an account has amounts but no planned row
  DepreciationAndOwnRow,  ///< an account is in its own row and in the sums of the row "Depreciation"
  TextCut,                ///< a balance, an average cost or a report's amount was read only in part, or as 0
  QuantityAsOne,          ///< a quantity that is not a number counted as 1
  BilledAgain,            ///< more was taken back for a customer and amount than was booked
  TotalColumn,            ///< a report of one month has more than one amount column; all were added
  NoStartRow,             ///< the formulas of a block refer to the wrong rows
  NamesDifferInCase,      ///< two top-level accounts have names that differ only in case
  NameWithQuote,          ///< an account cannot be offered for selection because of its name or id
  EquityNamedFirst,       ///< past performance takes all equity as retained earnings
  PastFromToday,          ///< past performance shows today's balances
  TablesNotLoaded,        ///< the plan did not take a document of changed tables
  HalfLoadedTwins         ///< only one table of a planned and actual pair could be written
};

/// Returns the stable word of a code, such as "balance-spread".
std::string_view WarningWord(WarningCode code) noexcept;

/// One account, row, item or table to which a warning applies. Amounts have the sign that they have in the
/// plan. Members that a code does not use are empty.
struct Finding {
  WarningCode code = WarningCode::NoRow;  ///< what is found
  /// The account (BalanceSpread, NoRow, DepreciationAndOwnRow, EquityNamedFirst, NamesDifferInCase,
  /// NameWithQuote, TextCut), the planned row (RowTwice, TwinMisaligned, TwinMissing, ShortRow), the item
  /// (QuantityAsOne, TextCut of an average cost), the customer (BilledAgain), the group of accounts
  /// (NoStartRow, TotalColumn), the table (HalfLoadedTwins), the processor's version (UnsupportedProcessor)
  /// or the plan's reason (TablesNotLoaded).
  std::string name = {};
  /// The other row (RowTwice, TwinMisaligned), account (NamesDifferInCase) or table (HalfLoadedTwins).
  std::string other = {};
  /// The text that was read (TextCut, QuantityAsOne, NoStartRow), or the period's first month as YYYY-MM
  /// (EmptyPeriod, TotalColumn).
  std::string text = {};
  /// The sum of the months' amounts concerned (RowTwice, TwinMisaligned, TwinMissing, ShortRow, NoRow,
  /// DepreciationAndOwnRow), the balance (BalanceSpread, EquityNamedFirst), the value that was taken
  /// (TextCut), the sum taken back too often (BilledAgain) or counted too often (TotalColumn).
  std::optional<double> amount = {};
  /// The balances of the sub-accounts that are not included (BalanceSpread).
  std::optional<double> otherAmount = {};
  /// The months concerned, 1 to 12, counted from the import's first (BalanceSpread, ShortRow).
  std::vector<std::int16_t> months = {};

  bool operator==(const Finding&) const = default;
};

/// A warning: everything that an import found with the same code.
struct Warning {
  WarningCode code = WarningCode::NoRow;  ///< what the findings have in common
  std::vector<Finding> findings;          ///< at least one, in the order in which they were found, each once
};

/// Returns a warning as one plain English sentence without a final period: what happened, with the names and
/// sums of the first five findings and the number of further ones.
std::string WarningText(const Warning& warning);

}  // namespace krnqb
