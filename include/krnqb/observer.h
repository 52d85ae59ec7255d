#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace krnqb {

/// Where something happened: the operation's name and, where there are any, the number of the request being
/// answered and the period that it asks for (dates as year-month-day).
struct Place {
  std::string operation;
  std::optional<std::int32_t> request;
  std::string fromDate;
  std::string toDate;
  std::string accountType = {};                 ///< of a balance sheet by account type
  std::optional<std::int16_t> pastPeriod = {};  ///< while past performance is collected: its period, 1 to 14
};

enum class NoticeKind {
  StatementSkipped,  ///< a statement failed; the operation went on with the next one
  OperationEnded,    ///< a statement failed and ended the operation, which gave its empty or partial result
  AnswerStatus,      ///< an answer came with a status other than 0 and 1
  AnswerUnreadable,  ///< an answer is no well-formed document
  TableUnreadable,   ///< a plan table's text is no well-formed document, or has no table blocks
  TablesNotLoaded,   ///< an empty text was loaded into the plan, which changed nothing there
  AmountSkipped,     ///< the amount of a transaction line, a report row or an account was left out, see
                     ///< `Skipped`
  AccountInSeveralRows,  ///< a report names an account in more than one row; every row was added
  ColumnsOutOfStep,      ///< a report row's columns do not stand where their numbers say
  PastPerformanceEnded,  ///< an account type is missing; `description` names it
  CompanyFileUnlisted    ///< a company file's path cannot stand in the list of companies, so there is none;
                         ///< `file` is the path, `description` the reason
};

/// Why an amount was left out.
enum class SkipReason {
  AmountIsNoNumber,      ///< the line has no amount, or one that is no number
  NoAccount,             ///< the expense line names no account
  NoItem,                ///< the line has an amount but names no item
  ItemWithoutAccount,    ///< the item list has no account for the item
  AccountInNoList,       ///< the account is in none of the lists that the amount could go to
  NoSubtotal,            ///< the top-level account has no subtotal in this import
  DuplicateBillableKey,  ///< an expense of the same customer and amount is recorded already
  InsideItemGroup,       ///< lines of an item group on a purchase are not taken
  SubtotalOutOfRange     ///< the sum would leave the range of a double
};

/// What was left out.
struct Skipped {
  SkipReason reason = SkipReason::NoAccount;
  std::string transactionId;    ///< empty for a report row
  std::string transactionDate;  ///< year-month-day; empty for a report row
  std::string source;           ///< the line's element name, or the report row's account name
  std::string account;          ///< the account's or item's id, where one is known
  std::string amount;           ///< as it stands in the answer
};

/// Something that the rules pass over in silence.
struct Notice {
  NoticeKind kind = NoticeKind::StatementSkipped;
  Place place;
  std::int32_t number = 0;  ///< the error number, or the answer's statusCode
  std::string severity;     ///< the answer's statusSeverity
  std::string description;  ///< the error's description, the answer's statusMessage, the table's id or the
                            ///< account's name
  std::optional<Skipped> skipped = std::nullopt;
  std::string file = {};  ///< the path that it is about, as the system has it: it need not be UTF-8
};

/// Is told what an import passes over, so that a person can learn what was left out and why. An observer
/// never changes what is done.
class Observer {
 public:
  virtual ~Observer() = default;
  virtual void Notify(const Notice& notice) noexcept = 0;
};

}  // namespace krnqb
