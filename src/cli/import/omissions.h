#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "krnqb/error.h"
#include "krnqb/observer.h"

namespace krnqb::cli {

enum class OmissionKind : std::uint8_t {
  RequestFailed,
  AnswerStatus,      ///< an answer with an error, or with a warning that something may be missing
  AnswerUnreadable,  ///< an answer that is no well-formed document
  TableUnreadable,   ///< a plan table without readable blocks
  TablesNotLoaded,   ///< changed tables that the plan did not take
  ColumnsOutOfStep,  ///< a report row whose columns do not stand where their numbers say
  OperationEnded     ///< an operation that a failure ended before its time
};

/// Something that an import should have read or written and has not. An import with omissions is incomplete.
struct Omission {
  OmissionKind kind = OmissionKind::OperationEnded;
  Place place;
  std::int32_t number = 0;  ///< the error's number or the answer's statusCode
  std::string severity;     ///< the answer's statusSeverity
  std::string description;  ///< the error's description, the answer's statusMessage or the table's id
};

/// What an import has left out, each omission once: an import may ask everything twice.
class Omissions {
 public:
  /// Takes in what the component tells: answers with an error or a warning, what could not be read,
  /// operations that ended before their time (but for the whole import, whose failure the error pair tells).
  void Add(const Notice& notice);

  /// Takes in a request that was refused, `document` being the request's text.
  void AddFailedRequest(std::string_view document, const Error& error);

  /// Adds a document of changed tables that the plan refused, with the reason.
  void AddRefusedLoad(std::string_view reason);

  const std::vector<Omission>& All() const noexcept { return omissions_; }

 private:
  void AddOnce(Omission omission);
  bool TellsFailedRequest(const Notice& notice) const;

  std::vector<Omission> omissions_;
};

/// A kind in one word, such as "request".
std::string_view KindWord(OmissionKind kind) noexcept;

/// An omission for a person: what it is and for what period, for example
/// "request 10 (bills) for 2002-01-01 to 2002-01-31: status 3260 (Error): No permission".
std::string OmissionText(const Omission& omission);

}  // namespace krnqb::cli
