#include "krnqb/import_report.h"

#include <cmath>
#include <functional>
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

std::size_t HashOf(const Notice& notice) {
  const std::hash<std::string> ofText;
  std::size_t hash = 0;
  const auto add = [&](std::size_t part) { hash = hash * 31 + part; };
  add(static_cast<std::size_t>(notice.kind));
  add(static_cast<std::size_t>(notice.number));
  add(ofText(notice.description));
  add(static_cast<std::size_t>(notice.place.request.value_or(0)));
  add(ofText(notice.place.fromDate));
  add(ofText(notice.place.toDate));
  add(static_cast<std::size_t>(OperationOf(notice)));
  return hash;
}

// Appends the item unless one that is the same is there.
template <typename Item, typename Same>
void AppendOnce(std::vector<Item>& items, std::unordered_multimap<std::size_t, std::size_t>& positions,
                std::size_t hash, const Item& item, const Same& isSame) {
  const auto [begin, end] = positions.equal_range(hash);
  for (auto found = begin; found != end; ++found) {
    if (isSame(items[found->second], item)) return;
  }
  items.push_back(item);
  positions.emplace(hash, items.size() - 1);
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
      KeepRepeated(notice.description);
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
  AppendOnce(missing_, missingPositions_, HashOf(notice), notice, IsSame);
}

void ImportReport::KeepRepeated(const std::string& account) {
  AppendOnce(repeatedAccounts_, repeatedPositions_, std::hash<std::string>()(account), account,
             std::equal_to<>());
}

void ImportReport::AddLeftOut(const Place& place, const Skipped& skipped) {
  const double amount = ConvertToDouble(skipped.amount).value_or(0);
  if (place.pastPeriod) return AddTo(leftOutOfPast_, amount);
  AddTo(leftOut_, amount);
  AddTo(leftOutByReason_[skipped.reason], amount);
}

}  // namespace krnqb
