#include "krnqb/import_report.h"

#include <algorithm>
#include <cmath>
#include <tuple>
#include <utility>

#include "support/number_text.h"

namespace krnqb {
namespace {

// Several operations send the same request: its refusal is one omission, whichever operation sent it.
Operation OperationOf(const Notice& notice) noexcept {
  return notice.kind == NoticeKind::RequestRefused ? Operation::None : notice.place.operation;
}

bool IsSame(const Notice& one, const Notice& other) {
  const auto contents = [](const Notice& notice) {
    const Place& place = notice.place;
    return std::tie(notice.kind, notice.number, notice.severity, notice.description, place.request,
                    place.fromDate, place.toDate);
  };
  return contents(one) == contents(other) && OperationOf(one) == OperationOf(other);
}

void AddTo(ImportReport::Total& total, double amount) {
  ++total.count;
  if (!total.sum) return;
  *total.sum += amount;
  if (!std::isfinite(*total.sum)) total.sum.reset();
}

}  // namespace

ImportReport::ImportReport(std::shared_ptr<Observer> next) noexcept : next_(std::move(next)) {}

void ImportReport::Notify(const Notice& notice) noexcept {
  try {
    Keep(notice);
  } catch (...) {
    noticeLost_ = true;
  }
  if (next_ != nullptr) next_->Notify(notice);
}

void ImportReport::Keep(const Notice& notice) {
  if (notice.meaning == NoticeMeaning::Incomplete) KeepMissing(notice);
  switch (notice.kind) {
    case NoticeKind::AmountSkipped:
      if (!notice.skipped) return;
      AddLeftOut(notice.place, *notice.skipped);
      break;
    case NoticeKind::AccountInSeveralRows:
      if (std::ranges::find(repeatedAccounts_, notice.description) == repeatedAccounts_.end()) {
        repeatedAccounts_.push_back(notice.description);
      }
      break;
    case NoticeKind::PastPerformanceEnded:
      if (pastPerformanceEnd_.empty()) pastPerformanceEnd_ = notice.description;
      break;
    default:
      return;
  }
  journal_.push_back(notice);
}

void ImportReport::KeepMissing(const Notice& notice) {
  // A list that could not be read leaves no tables to load; its own notice names the cause.
  if (notice.kind == NoticeKind::TablesNotLoaded && !missing_.empty()) return;
  const auto same = [&](const Notice& other) { return IsSame(notice, other); };
  if (std::ranges::none_of(missing_, same)) missing_.push_back(notice);
}

void ImportReport::AddLeftOut(const Place& place, const Skipped& skipped) {
  const double amount = ConvertToDouble(skipped.amount).value_or(0);
  if (place.pastPeriod) return AddTo(leftOutOfPast_, amount);
  AddTo(leftOut_, amount);
  AddTo(leftOutByReason_[skipped.reason], amount);
}

}  // namespace krnqb
