#include "cli/import/notices/omissions.h"

#include <fmt/format.h>

#include "cli/import/notices/request_names.h"
#include "cli/import/notices/warning_advice.h"
#include "plan_file/headings.h"

namespace krnqb::cli {
namespace {

std::string TableText(const std::string& id) {
  return fmt::format("plan table {} ({}) cannot be read", id, plan_file::TableTitle(id));
}

}  // namespace

std::string_view KindWord(NoticeKind kind) noexcept {
  switch (kind) {
    case NoticeKind::RequestRefused:
      return "request";
    case NoticeKind::AnswerStatus:
      return "status";
    case NoticeKind::AnswerUnreadable:
      return "answer";
    case NoticeKind::TableUnreadable:
      return "table";
    case NoticeKind::TablesNotLoaded:
    case NoticeKind::TablesRefused:
      return "load";
    case NoticeKind::ColumnsMisaligned:
      return "columns";
    case NoticeKind::Warning:
      return "warning";
    default:
      break;
  }
  return "operation";
}

Notice RefusedLoad(std::string_view reason) {
  return {.kind = NoticeKind::TablesRefused,
          .meaning = NoticeMeaning::Incomplete,
          .place = {.operation = Operation::Deserialize},
          .description = std::string(reason)};
}

std::string OmissionText(const Notice& omission) {
  const std::string request = RequestText(omission.place);
  switch (omission.kind) {
    case NoticeKind::RequestRefused:
      return fmt::format("{}: refused: {}", request, omission.description);
    case NoticeKind::AnswerStatus:
      return fmt::format("{}: status {} ({}): {}", request, omission.number, omission.severity,
                         omission.description);
    case NoticeKind::AnswerUnreadable:
      return fmt::format("{}: the answer is not well-formed XML", request);
    case NoticeKind::TableUnreadable:
      return TableText(omission.description);
    case NoticeKind::TablesNotLoaded:
    case NoticeKind::TablesRefused:
      return fmt::format("changed tables were not loaded into the plan: {}", omission.description);
    case NoticeKind::Warning:
      if (omission.finding) return WarningAdvice({omission.finding->code, {*omission.finding}});
      return fmt::format("a warning could not be kept: {}", omission.description);
    case NoticeKind::ColumnsMisaligned:
      return fmt::format("{}: the columns of the row {} are misaligned", request, omission.description);
    default:
      break;
  }
  const std::string where = omission.place.request ? fmt::format("{}: ", request) : std::string();
  return fmt::format("{}{} ended early: {}", where, OperationName(omission.place.operation),
                     omission.description);
}

}  // namespace krnqb::cli
