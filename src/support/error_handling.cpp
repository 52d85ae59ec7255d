#include "support/error_handling.h"

#include <new>

namespace krnqb {

Error CaughtError() {
  try {
    throw;
  } catch (const Error& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return Error(error_number::outOfMemory);
  } catch (...) {
    return Error(error_number::internalError);
  }
}

void ReportError(Observer& observer, NoticeKind kind, NoticeMeaning meaning, const Place& place,
                 const Error& error) noexcept {
  observer.Notify(Notice{.kind = kind,
                         .meaning = meaning,
                         .place = place,
                         .number = error.Number(),
                         .description = error.Description(),
                         .errorKind = error.Kind()});
}

void ReportEnd(Observer& observer, const Place& place, const Error& error, NoticeMeaning meaning) noexcept {
  const bool alreadyReported = error.Kind() == ErrorKind::RequestRefused;
  ReportError(observer, NoticeKind::OperationEnded, alreadyReported ? NoticeMeaning::Complete : meaning,
              place, error);
}

}  // namespace krnqb
