#include "krnqb/import_report.h"

#include <algorithm>
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
  return contents(one) == contents(other) && OperationOf(one) == OperationOf(other) &&
         one.finding == other.finding;
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

std::size_t HashOf(const Finding& finding) {
  const std::hash<std::string> ofText;
  std::size_t hash = 0;
  for (const std::string* text : {&finding.name, &finding.other, &finding.text})
    hash = hash * 31 + ofText(*text);
  return hash;
}

// The finding that a notice of another kind amounts to.
Finding TablesNotTaken(const Notice& notice) {
  return {.code = WarningCode::TablesNotLoaded, .name = notice.description};
}

std::optional<double> FiniteSum(double one, double other) noexcept {
  const double sum = one + other;
  return std::isfinite(sum) ? std::optional(sum) : std::nullopt;
}

void AddTo(ImportReport::Total& total, double amount) {
  ++total.count;
  if (total.sum) total.sum = FiniteSum(*total.sum, amount);
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
    case NoticeKind::Warning:
      if (notice.finding) KeepFinding(*notice.finding);
      return;
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
  if (notice.kind == NoticeKind::TablesNotLoaded || notice.kind == NoticeKind::TablesRefused)
    KeepFinding(TablesNotTaken(notice));
}

void ImportReport::KeepFinding(const Finding& finding) {
  // A period of which something could not be read is not known to be empty.
  if (finding.code == WarningCode::EmptyPeriod && !missing_.empty()) return;
  const auto hasCode = [&](const Warning& kept) { return kept.code == finding.code; };
  auto warning = std::find_if(warnings_.begin(), warnings_.end(), hasCode);
  if (warning == warnings_.end()) warning = warnings_.insert(warnings_.end(), {finding.code, {}});
  AppendOnce(warning->findings, findingPositions_[finding.code], HashOf(finding), finding, std::equal_to<>());
}

void ImportReport::KeepRepeated(const std::string& account) {
  AppendOnce(repeatedAccounts_, repeatedPositions_, std::hash<std::string>()(account), account,
             std::equal_to<>());
}

void ImportReport::AddLeftOut(const Place& place, const Skipped& skipped) {
  const double amount = ConvertToDouble(skipped.amount).value_or(0);
  if (place.pastPeriod) return AddTo(leftOutOfPast_, amount);
  AddTo(leftOut_, amount);
  NamedGroup& named = leftOutGroups_[{skipped.kind, skipped.reason}];
  named.group.kind = skipped.kind;
  named.group.reason = skipped.reason;
  AddTo(named.group.total, amount);
  const std::string& name = skipped.accountName.empty() ? skipped.account : skipped.accountName;
  if (name.empty()) return;
  AppendOnce(named.group.names, named.namePositions, std::hash<std::string>()(name), name, std::equal_to<>());
}

std::map<SkipReason, ImportReport::Total> ImportReport::LeftOutByReason() const {
  std::map<SkipReason, Total> totals;
  for (const auto& [key, named] : leftOutGroups_) {
    const Total& part = named.group.total;
    Total& total = totals[named.group.reason];
    total.count += part.count;
    total.sum = total.sum && part.sum ? FiniteSum(*total.sum, *part.sum) : std::nullopt;
  }
  return totals;
}

std::vector<ImportReport::LeftOutGroup> ImportReport::LeftOutGroups() const {
  std::vector<LeftOutGroup> groups;
  for (const auto& [key, named] : leftOutGroups_) groups.push_back(named.group);
  return groups;
}

bool ImportReport::AnyLeftOutOfRequested() const noexcept {
  return std::any_of(leftOutGroups_.begin(), leftOutGroups_.end(),
                     [](const auto& entry) { return entry.first.first != SkipKind::NotRequested; });
}

}  // namespace krnqb
