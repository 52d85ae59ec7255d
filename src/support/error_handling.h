#pragma once

#include <utility>

#include "krnqb/error.h"
#include "krnqb/observer.h"

namespace krnqb {

/// The exception being handled, as an Error: itself, or 7 for a failed allocation, or 51 for any other. Call
/// it in a catch block only.
Error CaughtError() noexcept;

/// Reports an error to the observer. Error 7 makes the import incomplete whatever `meaning` says, and a
/// notice for which there is no memory is reported as one of Error 7 without its place.
void ReportError(Observer& observer, NoticeKind kind, NoticeMeaning meaning, const Place& place,
                 const Error& error) noexcept;

/// Reports that an error ended an operation and what this means. After a refused request the meaning is
/// `Complete`: the refusal is already reported.
void ReportEnd(Observer& observer, const Place& place, const Error& error,
               NoticeMeaning meaning = NoticeMeaning::Incomplete) noexcept;

/// Runs one statement that may fail. A failure is reported to the observer, and the caller goes on with its
/// next statement. Returns whether the statement succeeded.
template <typename Statement>
bool SkipOnError(Observer& observer, const Place& place, Statement&& statement) {
  try {
    std::forward<Statement>(statement)();
    return true;
  } catch (...) {
    ReportError(observer, NoticeKind::StatementSkipped, NoticeMeaning::Complete, place, CaughtError());
    return false;
  }
}

/// Runs a whole operation under its catch-all: the first failure ends it and is reported to the observer, and
/// what had been done stays. `meaning` is what such an end means, see `ReportEnd`. Returns whether the
/// operation came to its end.
template <typename Body>
bool EndOnError(Observer& observer, const Place& place, Body&& body,
                NoticeMeaning meaning = NoticeMeaning::Incomplete) {
  try {
    std::forward<Body>(body)();
    return true;
  } catch (...) {
    ReportEnd(observer, place, CaughtError(), meaning);
    return false;
  }
}

/// Runs an operation that reports its failures to its caller: whatever it throws leaves as an Error.
template <typename Body>
auto ThrowingErrorsOnly(Body&& body) {
  try {
    return std::forward<Body>(body)();
  } catch (...) {
    throw CaughtError();
  }
}

}  // namespace krnqb
