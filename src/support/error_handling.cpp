#include "support/error_handling.h"

#include <new>

namespace krnqb {

namespace {

// Short enough to be copied without an allocation.
Error OutOfMemory() {
  return Error(error_number::outOfMemory);
}

Error ErrorInHand() {
  try {
    throw;
  } catch (const Error& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return OutOfMemory();
  } catch (...) {
    return Error(error_number::internalError);
  }
}

}  // namespace

Error CaughtError() noexcept {
  try {
    return ErrorInHand();
  } catch (...) {
    return OutOfMemory();  // there is no memory for the description either
  }
}

void ReportError(Observer& observer, NoticeKind kind, NoticeMeaning meaning, const Place& place,
                 const Error& error) noexcept {
  // Whatever was skipped for want of memory is missing.
  if (error.Kind() == ErrorKind::OutOfMemory) meaning = NoticeMeaning::Incomplete;
  try {
    observer.Notify(Notice{.kind = kind,
                           .meaning = meaning,
                           .place = place,
                           .number = error.Number(),
                           .description = error.Description(),
                           .errorKind = error.Kind()});
  } catch (...) {
    observer.Notify(Notice{.kind = kind,
                           .meaning = NoticeMeaning::Incomplete,
                           .number = error_number::outOfMemory,
                           .errorKind = ErrorKind::OutOfMemory});
  }
}

void ReportEnd(Observer& observer, const Place& place, const Error& error, NoticeMeaning meaning) noexcept {
  const bool alreadyReported = error.Kind() == ErrorKind::RequestRefused;
  ReportError(observer, NoticeKind::OperationEnded, alreadyReported ? NoticeMeaning::Complete : meaning,
              place, error);
}

}  // namespace krnqb
