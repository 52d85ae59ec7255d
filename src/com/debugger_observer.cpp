#include "com/debugger_observer.h"

#include <fmt/format.h>
#include <windows.h>

#include "com/values/text.h"

namespace krnqb::com {
namespace {

std::string_view WhatHappened(NoticeKind kind) {
  switch (kind) {
    case NoticeKind::StatementSkipped:
      return "skipped a statement";
    case NoticeKind::OperationEnded:
      return "ended early";
    case NoticeKind::AnswerStatus:
      return "was answered with a status";
    case NoticeKind::AnswerUnreadable:
      return "got an answer that is not a document";
    case NoticeKind::TableUnreadable:
      return "found a plan table unreadable";
    case NoticeKind::TablesNotLoaded:
      return "loaded no tables into the plan";
    case NoticeKind::AmountSkipped:
      return "left an amount out";
    case NoticeKind::AccountInSeveralRows:
      return "found an account in several rows";
    case NoticeKind::ColumnsMisaligned:
      return "found misaligned columns";
    case NoticeKind::PastPerformanceEnded:
      return "ended past performance";
    case NoticeKind::Warning:
      return "has a warning";
    case NoticeKind::CompanyFileUnlisted:
      return "could not list a company file";
    default:
      return "noticed something";
  }
}

class DebuggerLines final : public Observer {
 public:
  void Notify(const Notice& notice) noexcept override {
    if (IsDebuggerPresent() == FALSE) return;
    // The operation that sent the request reports the refusal as its own end or skipped statement.
    if (notice.kind == NoticeKind::RequestRefused) return;
    try {
      const std::string description =
          notice.finding ? WarningText({notice.finding->code, {*notice.finding}}) : notice.description;
      const std::string line =
          fmt::format("KRN6_QB2002: {} {} ({}): {}\n", OperationName(notice.place.operation),
                      WhatHappened(notice.kind), notice.number, description);
      OutputDebugStringW(Wide(line).c_str());
    } catch (...) {
      // Failing to write a debug line must not fail the import.
    }
  }
};

}  // namespace

std::shared_ptr<Observer> DebuggerObserver() {
  return std::make_shared<DebuggerLines>();
}

}  // namespace krnqb::com
