#include "cli/import/omissions.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <tuple>

#include "cli/import/request_names.h"
#include "plan_file/headings.h"

namespace krnqb::cli {
namespace {

// From this status on data may be missing, whatever severity the answer names.
constexpr std::int32_t firstWarningStatus = 500;

auto Contents(const Omission& omission) {
  const Place& place = omission.place;
  return std::tie(omission.kind, omission.number, omission.severity, omission.description, place.operation,
                  place.request, place.fromDate, place.toDate);
}

// No accounting program knows these as types of a balance sheet: it always answers with an error, and nothing
// is missing.
bool AsksForNoRealType(const Place& place) {
  return place.accountType == "Depreciation" || place.accountType == "RetainedEarnings";
}

// The failure of the whole import is in the error pair. Past performance that ends where the company has no
// account of a type is told as that.
bool EndIsToldElsewhere(const Place& place) {
  return place.operation == "Go" || place.operation == "CollectPastPerformance" ||
         place.operation == "WritePastPerformance";
}

// An account list that is not there was not asked for, or its own request tells why. What works on it ends at
// once, and no amount that was asked for is missing.
bool HadNoList(const Notice& notice) {
  const std::string& operation = notice.place.operation;
  return notice.number == error_number::objectNotSet &&
         (operation == "SpreadExpenseBalances" || operation == "TopLevelSubtotals");
}

std::optional<OmissionKind> KindOf(const Notice& notice) {
  switch (notice.kind) {
    case NoticeKind::AnswerStatus: {
      const bool harmless = notice.severity == "Info" && notice.number < firstWarningStatus;
      return harmless || AsksForNoRealType(notice.place) ? std::nullopt
                                                         : std::optional(OmissionKind::AnswerStatus);
    }
    case NoticeKind::AnswerUnreadable:
      return OmissionKind::AnswerUnreadable;
    case NoticeKind::TableUnreadable:
      return OmissionKind::TableUnreadable;
    case NoticeKind::TablesNotLoaded:
      return OmissionKind::TablesNotLoaded;
    case NoticeKind::OperationEnded:
      return EndIsToldElsewhere(notice.place) || HadNoList(notice)
                 ? std::nullopt
                 : std::optional(OmissionKind::OperationEnded);
    case NoticeKind::ColumnsOutOfStep:
      return OmissionKind::ColumnsOutOfStep;
    case NoticeKind::StatementSkipped:
    case NoticeKind::AmountSkipped:
    case NoticeKind::AccountInSeveralRows:
    case NoticeKind::PastPerformanceEnded:
    case NoticeKind::CompanyFileUnlisted:
      break;
  }
  return std::nullopt;
}

std::string TableText(const std::string& id) {
  return fmt::format("plan table {} ({}) cannot be read", id, plan_file::TableTitle(id));
}

}  // namespace

void Omissions::Add(const Notice& notice) {
  const std::optional<OmissionKind> kind = KindOf(notice);
  if (!kind || TellsFailedRequest(notice)) return;
  // A list that could not be read leaves no tables to load; its own omission names the cause.
  if (kind == OmissionKind::TablesNotLoaded && !omissions_.empty()) return;
  AddOnce({*kind, notice.place, notice.number, notice.severity, notice.description});
}

void Omissions::AddFailedRequest(std::string_view document, const Error& error) {
  AddOnce({OmissionKind::RequestFailed, PlaceOfRequest(document), error.Number(), {}, error.Description()});
}

void Omissions::AddRefusedLoad(std::string_view reason) {
  AddOnce({OmissionKind::TablesNotLoaded, {}, 0, {}, std::string(reason)});
}

void Omissions::AddOnce(Omission omission) {
  const auto same = [&](const Omission& other) { return Contents(other) == Contents(omission); };
  if (std::none_of(omissions_.begin(), omissions_.end(), same)) omissions_.push_back(std::move(omission));
}

// A refused request ends the operation that sent it; that is one omission, not two.
bool Omissions::TellsFailedRequest(const Notice& notice) const {
  return notice.kind == NoticeKind::OperationEnded && !omissions_.empty() &&
         omissions_.back().kind == OmissionKind::RequestFailed && omissions_.back().number == notice.number &&
         omissions_.back().description == notice.description;
}

std::string_view KindWord(OmissionKind kind) noexcept {
  switch (kind) {
    case OmissionKind::RequestFailed:
      return "request";
    case OmissionKind::AnswerStatus:
      return "status";
    case OmissionKind::AnswerUnreadable:
      return "answer";
    case OmissionKind::TableUnreadable:
      return "table";
    case OmissionKind::TablesNotLoaded:
      return "load";
    case OmissionKind::ColumnsOutOfStep:
      return "columns";
    case OmissionKind::OperationEnded:
      break;
  }
  return "operation";
}

std::string OmissionText(const Omission& omission) {
  const std::string request = RequestText(omission.place);
  switch (omission.kind) {
    case OmissionKind::RequestFailed:
      return fmt::format("{}: refused: {}", request, omission.description);
    case OmissionKind::AnswerStatus:
      return fmt::format("{}: status {} ({}): {}", request, omission.number, omission.severity,
                         omission.description);
    case OmissionKind::AnswerUnreadable:
      return fmt::format("{}: the answer is no well-formed XML", request);
    case OmissionKind::TableUnreadable:
      return TableText(omission.description);
    case OmissionKind::TablesNotLoaded:
      return fmt::format("changed tables were not loaded into the plan: {}", omission.description);
    case OmissionKind::ColumnsOutOfStep:
      return fmt::format("{}: the columns of the row {} are out of step", request, omission.description);
    case OmissionKind::OperationEnded:
      break;
  }
  const std::string where = omission.place.request ? fmt::format("{}: ", request) : std::string();
  return fmt::format("{}{} ended early: {}", where, omission.place.operation, omission.description);
}

}  // namespace krnqb::cli
