#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "krnqb/error.h"
#include "krnqb/warning.h"

namespace krnqb {

/// An operation of the component that reports notices. The last four are the events, for failures of an
/// event's receiver.
enum class Operation : std::uint8_t {
  None,                      ///< no operation is named
  CollectPastPerformance,    ///< reads the figures of past periods
  Deserialize,               ///< the plan's
  EnsureSession,             ///< opens a session and checks the company
  Go,                        ///< the whole import
  ImportExpenseBalances,     ///< reads the expenses of the twelve months
  ImportIncomeBalances,      ///< reads sales and cost of goods of the twelve months
  IsSDKVersionSupported,     ///< asks which versions of qbXML QuickBooks supports
  ItemAccount,               ///< finds the account of an item
  KRNDeserialize,            ///< merges an account list into the plan tables
  LoadQuickBooksLists,       ///< reads the lists of accounts and items
  MonthsOfActivity,          ///< finds the last month with an amount
  OffsetBilledExpense,       ///< takes back an expense that a sale bills to its customer
  ParseBalanceSheetByType,   ///< reads a balance sheet report
  ParseProfitAndLossReport,  ///< reads a profit and loss report
  QBCompanies,               ///< lists the company files
  QBExpenseAccounts,         ///< reads the expense accounts
  QBIncomeAccounts,          ///< reads the income accounts
  QbSerialize,               ///< sends one request of the host
  ReadExpenseTransactions,   ///< reads bills, checks and credit card charges
  ReadPlanTable,             ///< reads a table of the plan
  ReadSalesTransactions,     ///< reads invoices and sales receipts
  SelectedExpenses,          ///< builds the selection of expense accounts
  ShowDialog,                ///< shows a dialog
  SpreadExpenseBalances,     ///< spreads the balances of accounts without transactions over months
  SubmitCustomRequest,       ///< shows that custom requests are not implemented
  TopLevelAccountName,       ///< finds the top-level account of an account
  TopLevelSubtotals,         ///< makes an empty sum for each top-level account
  WriteCostGrowth,           ///< writes the amounts of cost of goods
  WriteExpenseGrowth,        ///< writes the amounts of expenses
  WritePastPerformance,      ///< writes the figures of past periods
  WriteSalesGrowth,          ///< writes the amounts of sales
  XMLprocessing,             ///< the event of that name
  TableModified,             ///< the event of that name
  AfterImport,               ///< the event of that name
  ProgressBarChange          ///< the event of that name
};

/// Returns the name of an operation, as used in messages, JSON and journals; empty for `None`.
std::string_view OperationName(Operation operation) noexcept;

/// The place a notice refers to: the operation and, if a request is concerned, its number and period.
struct Place {
  Operation operation = Operation::None;        ///< what the import was doing
  std::optional<std::int32_t> request = {};     ///< the number of the request
  std::string fromDate = {};                    ///< first day of the period, year-month-day
  std::string toDate = {};                      ///< last day of the period, year-month-day
  std::string accountType = {};                 ///< the type that a balance sheet is filtered by
  std::optional<std::int16_t> pastPeriod = {};  ///< the period of past performance, 1 to 14
};

/// What happened.
enum class NoticeKind {
  StatementSkipped,  ///< a statement failed; the operation went on with the next one
  OperationEnded,  ///< a statement failed and ended the operation, which returned an empty or partial result
  AnswerStatus,    ///< an answer has a status other than 0 and 1
  AnswerUnreadable,      ///< an answer is not a well-formed document
  TableUnreadable,       ///< a plan table's text is not a well-formed document, or has no table blocks
  TablesNotLoaded,       ///< an empty text was loaded into the plan, which left it unchanged
  TablesRefused,         ///< the plan refused a document of changed tables; `description` is the reason
  AmountSkipped,         ///< the amount of a transaction line, a report row or an account was left out, see
                         ///< `Skipped`
  AccountInSeveralRows,  ///< a report names an account in more than one row; every row was added
  ColumnsMisaligned,     ///< the columns of a report row are not in the order of their numbers
  PastPerformanceEnded,  ///< an account type is missing; `description` names it
  CompanyFileUnlisted,   ///< the list of companies cannot be built, since it cannot represent the path in
                         ///< `file`; `description` is the reason
  RequestRefused,        ///< QuickBooks refused a request; the sender also receives the error
  Warning                ///< the plan differs from the books although every rule was followed, see `Finding`
};

/// The effect of a notice on the result of the import.
enum class NoticeMeaning : std::uint8_t {
  Complete,    ///< nothing is missing, or another notice or the error pair reports what is missing
  Incomplete,  ///< something that was requested could not be read or written
  LeftOut      ///< an amount was read but left out by the rules of the import
};

/// The reason for which an amount was left out.
enum class SkipReason {
  AmountIsNoNumber,      ///< the line has no amount, or one that is not a number
  NoAccount,             ///< the expense line names no account
  NoItem,                ///< the line has an amount but names no item
  ItemWithoutAccount,    ///< the item list has no account for the item
  AccountInNoList,       ///< none of the account lists that apply to the amount contains the account
  NoSubtotal,            ///< the top-level account has no subtotal in this import
  DuplicateBillableKey,  ///< an expense of the same customer and amount is already recorded
  InsideItemGroup,       ///< lines of an item group on a purchase are not imported
  SubtotalOutOfRange     ///< the sum would exceed the range of a double
};

/// What it means that an amount was left out.
enum class SkipKind : std::uint8_t {
  NotRequested,  ///< the import does not include the account's list
  NotImported,   ///< the rules of the import do not book such lines
  Lost           ///< the line is incomplete or its amount cannot be added
};

/// An amount that was left out.
struct Skipped {
  SkipReason reason = SkipReason::NoAccount;  ///< why
  SkipKind kind = SkipKind::NotImported;      ///< what it means for the plan
  std::string transactionId = {};             ///< empty for a report row
  std::string transactionDate = {};           ///< year-month-day; empty for a report row
  std::string source = {};                    ///< the line's element name, or the report row's account name
  std::string account = {};                   ///< the account's or item's id, or an account's name, if known
  std::string accountName = {};               ///< the account's or item's full name, if known
  std::string customer = {};                  ///< the customer's id, if the line or its transaction has one
  std::string customerName = {};              ///< the customer's full name, if known
  std::string amount = {};                    ///< the text in the answer
  std::int64_t line = 0;  ///< the number of its `SourceLine` if bookings are received, otherwise 0
};

/// A failure, an oddity or a left-out amount that an import reports.
struct Notice {
  NoticeKind kind = NoticeKind::StatementSkipped;   ///< what happened
  NoticeMeaning meaning = NoticeMeaning::Complete;  ///< what it means for the import's result
  Place place = {};                                 ///< where it happened
  std::int32_t number = 0;                          ///< the error number, or the answer's statusCode
  std::string severity = {};                        ///< the answer's statusSeverity
  std::string description = {};  ///< the error's description, the answer's statusMessage, the table's id or
                                 ///< the account's name
  std::optional<Skipped> skipped = {};  ///< set if the kind is `AmountSkipped`
  std::optional<Finding> finding = {};  ///< set if the kind is `Warning`
  std::string file = {};                ///< the path concerned, in the system's bytes; not necessarily UTF-8
  ErrorKind errorKind = ErrorKind::Other;  ///< the error's kind; `Other` without an error
};

class BookingReceiver;

/// Receives the notices of an import, so that a user can see what was left out and why. An observer does not
/// affect the import.
class Observer {
 public:
  virtual ~Observer() = default;
  /// Called on the thread that runs the import; `notice` is valid only during the call.
  virtual void Notify(const Notice& notice) noexcept = 0;
  /// Returns who receives the bookings of an import, see `krnqb/booking.h`; null if nobody does, which saves
  /// the import the work. The observer owns the receiver, which must live as long as the observer.
  virtual BookingReceiver* Bookings() noexcept { return nullptr; }
};

}  // namespace krnqb
