#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "krnqb/error.h"

namespace krnqb {

/// An operation of the component in which something can fail or be passed over. The last four are the events,
/// for failures of an event's receiver.
enum class Operation : std::uint8_t {
  None,  ///< no operation is named
  CollectPastPerformance,
  Deserialize,  ///< of the plan
  EnsureSession,
  Go,
  ImportExpenseBalances,
  ImportIncomeBalances,
  IsSDKVersionSupported,
  ItemAccount,
  KRNDeserialize,
  LoadQuickBooksLists,
  MonthsOfActivity,
  OffsetBilledExpense,
  ParseBalanceSheetByType,
  ParseProfitAndLossReport,
  QBCompanies,
  QBExpenseAccounts,
  QBIncomeAccounts,
  QbSerialize,
  ReadExpenseTransactions,
  ReadPlanTable,
  ReadSalesTransactions,
  SelectedExpenses,
  ShowDialog,
  SpreadExpenseBalances,
  SubmitCustomRequest,
  TopLevelAccountName,
  TopLevelSubtotals,
  WriteCostGrowth,
  WriteExpenseGrowth,
  WritePastPerformance,
  WriteSalesGrowth,
  XMLprocessing,
  TableModified,
  AfterImport,
  ProgressBarChange
};

/// Returns the name of an operation as messages, JSON and journals show it; empty for `None`.
std::string_view OperationName(Operation operation) noexcept;

/// Where something happened: the operation and, if it concerns a request, the request's number and period.
struct Place {
  Operation operation = Operation::None;
  std::optional<std::int32_t> request = {};
  std::string fromDate = {};                    ///< first day of the period, year-month-day
  std::string toDate = {};                      ///< last day of the period, year-month-day
  std::string accountType = {};                 ///< of a balance sheet by account type
  std::optional<std::int16_t> pastPeriod = {};  ///< while past performance is collected: its period, 1 to 14
};

enum class NoticeKind {
  StatementSkipped,  ///< a statement failed; the operation went on with the next one
  OperationEnded,  ///< a statement failed and ended the operation, which returned an empty or partial result
  AnswerStatus,    ///< an answer came with a status other than 0 and 1
  AnswerUnreadable,      ///< an answer is not a well-formed document
  TableUnreadable,       ///< a plan table's text is not a well-formed document, or has no table blocks
  TablesNotLoaded,       ///< an empty text was loaded into the plan, which changed nothing there
  TablesRefused,         ///< the plan refused a document of changed tables; `description` is the reason
  AmountSkipped,         ///< the amount of a transaction line, a report row or an account was left out, see
                         ///< `Skipped`
  AccountInSeveralRows,  ///< a report names an account in more than one row; every row was added
  ColumnsMisaligned,     ///< the columns of a report row are not in the order of their numbers
  PastPerformanceEnded,  ///< an account type is missing; `description` names it
  CompanyFileUnlisted,   ///< a company file's path cannot be an entry in the list of companies, which is
                         ///< therefore missing; `file` is the path, `description` the reason
  RequestRefused         ///< QuickBooks refused a request; the error also goes to whoever sent it
};

/// What a notice means for the result of the import.
enum class NoticeMeaning : std::uint8_t {
  Complete,    ///< nothing is missing, or what is missing is reported by another notice or by the error pair
  Incomplete,  ///< something that was asked for could not be read or written
  LeftOut      ///< an amount was read, but the rules of the import have no place for it
};

/// Why an amount was left out.
enum class SkipReason {
  AmountIsNoNumber,      ///< the line has no amount, or one that is not a number
  NoAccount,             ///< the expense line names no account
  NoItem,                ///< the line has an amount but names no item
  ItemWithoutAccount,    ///< the item list has no account for the item
  AccountInNoList,       ///< the account is in none of the lists that the amount could go to
  NoSubtotal,            ///< the top-level account has no subtotal in this import
  DuplicateBillableKey,  ///< an expense of the same customer and amount is recorded already
  InsideItemGroup,       ///< lines of an item group on a purchase are not imported
  SubtotalOutOfRange     ///< the sum would leave the range of a double
};

/// An amount that was left out.
struct Skipped {
  SkipReason reason = SkipReason::NoAccount;
  std::string transactionId = {};    ///< empty for a report row
  std::string transactionDate = {};  ///< year-month-day; empty for a report row
  std::string source = {};           ///< the line's element name, or the report row's account name
  std::string account = {};          ///< the account's or item's id, if known
  std::string amount = {};           ///< the text of the answer
};

/// Something that an import passes over without ending.
struct Notice {
  NoticeKind kind = NoticeKind::StatementSkipped;
  NoticeMeaning meaning = NoticeMeaning::Complete;
  Place place = {};
  std::int32_t number = 0;       ///< the error number, or the answer's statusCode
  std::string severity = {};     ///< the answer's statusSeverity
  std::string description = {};  ///< the error's description, the answer's statusMessage, the table's id or
                                 ///< the account's name
  std::optional<Skipped> skipped = {};
  std::string file = {};  ///< the path concerned, in the system's bytes: it need not be UTF-8
  ErrorKind errorKind = ErrorKind::Other;  ///< of the error, if there is one
};

/// Receives what an import passes over, so that a person can learn what was left out and why. An observer
/// never changes what is done.
class Observer {
 public:
  virtual ~Observer() = default;
  virtual void Notify(const Notice& notice) noexcept = 0;
};

}  // namespace krnqb
