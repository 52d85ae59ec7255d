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
};

enum class NoticeKind {
  StatementSkipped,  ///< a statement failed; the operation went on with the next one
  OperationEnded,    ///< a statement failed and ended the operation, which gave its empty or partial result
  AnswerStatus,      ///< an answer came with a status other than 0 and 1
  AnswerUnreadable,  ///< an answer is no well-formed document
  TableUnreadable    ///< a plan table's text is no well-formed document, or has no table blocks
};

/// Something that the rules pass over in silence.
struct Notice {
  NoticeKind kind = NoticeKind::StatementSkipped;
  Place place;
  std::int32_t number = 0;  ///< the error number, or the answer's statusCode
  std::string severity;     ///< the answer's statusSeverity
  std::string description;  ///< the error's description, the answer's statusMessage, or the table's id
};

/// Is told what an import passes over, so that a person can learn what was left out and why. An observer
/// never changes what is done.
class Observer {
 public:
  virtual ~Observer() = default;
  virtual void Notify(const Notice& notice) noexcept = 0;
};

}  // namespace krnqb
