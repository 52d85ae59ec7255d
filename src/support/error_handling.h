#pragma once

#include <utility>

#include "krnqb/error.h"
#include "krnqb/observer.h"

namespace krnqb {

/// The exception being handled, as an Error: itself, or 7 for a failed allocation, or 51 for any other. Call
/// it in a catch block only.
Error CaughtError();

/// Tells the observer that a statement failed.
void TellError(Observer& observer, NoticeKind kind, const Place& place, const Error& error) noexcept;

/// Runs one statement that may fail: when it does, the observer is told and the caller goes on with its next
/// statement. Gives whether the statement succeeded.
template <typename Statement>
bool SkipOnError(Observer& observer, const Place& place, Statement&& statement) {
  try {
    std::forward<Statement>(statement)();
    return true;
  } catch (...) {
    TellError(observer, NoticeKind::StatementSkipped, place, CaughtError());
    return false;
  }
}

/// Runs a whole operation under its catch-all: the first failure ends it, the observer is told, and what had
/// been done stays. Gives whether the operation came to its end.
template <typename Operation>
bool EndOnError(Observer& observer, const Place& place, Operation&& operation) {
  try {
    std::forward<Operation>(operation)();
    return true;
  } catch (...) {
    TellError(observer, NoticeKind::OperationEnded, place, CaughtError());
    return false;
  }
}

/// Runs an operation that reports its failures to its caller: whatever it throws leaves as an Error.
template <typename Operation>
auto ThrowingErrorsOnly(Operation&& operation) {
  try {
    return std::forward<Operation>(operation)();
  } catch (...) {
    throw CaughtError();
  }
}

}  // namespace krnqb
