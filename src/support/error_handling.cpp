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

void TellError(Observer& observer, NoticeKind kind, const Place& place, const Error& error) noexcept {
  observer.Notify(Notice{.kind = kind,
                         .place = place,
                         .number = error.Number(),
                         .severity = {},
                         .description = error.Description()});
}

}  // namespace krnqb
