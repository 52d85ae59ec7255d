#pragma once

#include <utility>

#include "krnqb/observer.h"
#include "support/error_handling.h"

namespace krnqb {

/// Reports a warning to the observer. `build` returns its Finding; it runs only here, so that a failure of
/// building it (there is no memory for its texts) is reported instead and does not reach the import.
template <typename Build>
void ReportWarning(Observer& observer, const Place& place, Build&& build,
                   NoticeMeaning meaning = NoticeMeaning::Complete) noexcept {
  try {
    Notice notice{.kind = NoticeKind::Warning, .meaning = meaning, .place = place};
    notice.finding = std::forward<Build>(build)();
    observer.Notify(notice);
  } catch (...) {
    ReportError(observer, NoticeKind::Warning, NoticeMeaning::Incomplete, place, CaughtError());
  }
}

}  // namespace krnqb
