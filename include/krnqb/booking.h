#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace krnqb {

/// The sums that an import builds from what it reads.
enum class AmountGroup : std::uint8_t {
  Expenses,        ///< by top-level expense account
  Income,          ///< by top-level income account
  CostOfGoods,     ///< by top-level account of cost of goods sold
  PastPerformance  ///< by account type
};

/// One sum: of a top-level account in one month, or of an account type in one period of past performance. It
/// starts at 0.
struct AmountSlot {
  AmountGroup group = AmountGroup::Expenses;  ///< the kind of sum
  std::string_view name = {};  ///< the top-level account's name, or the account type; compared as keys are
  std::int16_t number = 1;  ///< the month, 1 to 12 from the first month read; of past performance its period,
                            ///< 1 to 14
  /// The period of past performance, 1 to 14, for which the months are read; nullopt for the import's own
  /// twelve months and for the group PastPerformance.
  std::optional<std::int16_t> pastPeriod = {};
};

/// A line of a transaction, as QuickBooks answered it.
struct SourceLine {
  std::int64_t number = 0;   ///< in the order in which lines are read, from 1
  std::int32_t request = 0;  ///< the request that answered it: 10 bill, 11 check, 12 credit card charge,
                             ///< 20 invoice, 21 sales receipt
  std::int16_t month = 1;    ///< of the twelve months read, 1 to 12
  std::optional<std::int16_t> pastPeriod = {};  ///< see `AmountSlot`
  std::string_view transactionId = {};  ///< TxnID; this and the following texts are empty if they are missing
  std::string_view lineId = {};         ///< TxnLineID
  std::string_view date = {};           ///< TxnDate, year-month-day
  std::string_view referenceNumber = {};  ///< RefNumber
  std::string_view element = {};          ///< the line's element, such as "ExpenseLineRet"
  std::string_view party = {};            ///< the full name of the transaction's vendor, payee or customer
  std::string_view customer = {};         ///< the full name of the line's own customer
  std::string_view account = {};          ///< ListID of the line's account
  std::string_view accountName = {};      ///< its full name
  std::string_view item = {};             ///< ListID of the line's item or item group
  std::string_view itemName = {};         ///< its full name
  std::string_view amount = {};           ///< Amount, as it is in the answer
  std::string_view quantity = {};         ///< Quantity, as it is in the answer
};

/// Why an amount is added to a sum.
enum class BookingRule : std::uint8_t {
  ChargedToExpense,        ///< an expense line: added to its expense account
  CreditedToIncome,        ///< an expense line of an income account: subtracted from it
  Sale,                    ///< a sales line: added to the income account of its item
  SaleCreditedToExpense,   ///< a sales line whose item has an expense account: subtracted from it
  CostOfSale,              ///< quantity times average cost of a sold item
  BilledExpenseTakenBack,  ///< a sale bills an expense to its customer: subtracted from the expense account
  SpreadBalance,           ///< an account without transactions: its balance divided evenly over months
  ReportCell,              ///< a cell of a report
  BalanceToday,            ///< past performance: an account's balance
  PreviousPeriod,          ///< past performance: the figure of the period before
  PeriodBegins,            ///< past performance: the figure is set to 0
  PeriodTotal              ///< past performance: the sum of an account's months in the period
};

/// Returns the stable word of a rule, such as "charged-to-expense".
std::string_view BookingRuleWord(BookingRule rule) noexcept;

/// An amount that is added to a sum. Texts that do not apply are empty.
struct Booking {
  AmountSlot slot = {};                              ///< the sum to which the amount is added
  BookingRule rule = BookingRule::ChargedToExpense;  ///< why it is added
  double amount = 0;                                 ///< with the sign with which it is added
  bool replaces = false;              ///< whether the sum becomes `amount`, whatever was booked before
  std::string_view account = {};      ///< ListID of the account that the line or its item names
  std::string_view accountName = {};  ///< the account's full name, or its name if it comes without an id
  std::string_view text = {};  ///< the number as it is in the answer: the line's amount, the report's cell,
                               ///< the balance
  const SourceLine* line = nullptr;        ///< of a transaction line, which was passed to `ReadLine` before
  std::optional<double> quantity = {};     ///< CostOfSale: how many were sold
  std::optional<double> averageCost = {};  ///< CostOfSale: the cost of one today
  std::int64_t billedLine = 0;             ///< BilledExpenseTakenBack: the number of the expense's line
  bool billedAgain = false;        ///< BilledExpenseTakenBack: whether more is taken back than was booked
  std::int32_t request = 0;        ///< ReportCell: the report's request number
  std::string_view fromDate = {};  ///< ReportCell: the report's first day, year-month-day
  std::string_view toDate = {};    ///< ReportCell: its last day
};

/// What an import writes into a cell.
enum class CellContent : std::uint8_t {
  GrowthRate,     ///< a planned row's rate
  GrowthFormula,  ///< a planned month: the amount, grown by the row's rate
  Amount,         ///< an actual month
  PastFigure      ///< a period of past performance
};

/// Returns the stable word of a content, such as "growth-formula".
std::string_view CellContentWord(CellContent content) noexcept;

/// A sum that is part of a cell's amount.
struct CellTerm {
  AmountSlot slot = {};     ///< the sum
  bool subtracted = false;  ///< whether it is subtracted instead of added
};

/// A cell that an import has written into a table of the plan. Its amount is the sum of its terms, added in
/// order from 0.
struct WrittenCell {
  CellContent content = CellContent::Amount;  ///< what the cell holds
  std::string_view table = {};                ///< the table's id
  std::string_view block = {};                ///< the block's id
  std::string_view row = {};             ///< the name of the planned row, or of the row of past performance
  std::int32_t rowNumber = 1;            ///< the row's place in its block, from 1
  std::int32_t column = 0;               ///< the cell's place in its row, from 0
  std::int16_t number = 0;               ///< the month, 1 to 12, or the period, 1 to 14; 0 for a growth rate
  std::string_view text = {};            ///< the new text of the cell
  std::span<const CellTerm> terms = {};  ///< empty for a growth rate
};

/// Receives what an import's figures are made of. Everything passed is valid only during the call. Calls come
/// on the thread that runs the import, in this order: a line before its bookings, the bookings of a sum in
/// the order in which they are added, a cell after all bookings of its sums. Has no effect on the import.
class BookingReceiver {
 public:
  virtual ~BookingReceiver() = default;
  /// A line was read, whether or not anything is booked for it. What is left out of it is reported to the
  /// observer before the next line, as an `AmountSkipped` with the line's number.
  virtual void ReadLine(const SourceLine& line) noexcept = 0;
  /// An amount was added to a sum.
  virtual void Book(const Booking& booking) noexcept = 0;
  /// A cell was written.
  virtual void WriteCell(const WrittenCell& cell) noexcept = 0;
};

}  // namespace krnqb
