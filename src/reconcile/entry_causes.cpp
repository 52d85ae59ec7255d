#include "reconcile/entry_causes.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <span>
#include <unordered_set>
#include <utility>
#include <vector>

namespace krnqb::reconcile {
namespace {

// Sorts entries by key; those with the same key keep their order. Keys are numbered from 0 without gaps, so
// counting them is faster than comparing them.
template <typename Entry>
void SortByKey(std::vector<Entry>& entries) {
  if (std::ranges::is_sorted(entries, {}, &Entry::key)) return;
  const std::size_t keys = std::ranges::max(entries, {}, &Entry::key).key + std::size_t{1};
  std::vector<std::size_t> places(keys + 1);  // by key; of its next entry
  for (const Entry& entry : entries) ++places[entry.key + std::size_t{1}];
  std::partial_sum(places.begin(), places.end(), places.begin());
  std::vector<Entry> sorted(entries.size());
  for (const Entry& entry : entries) sorted[places[entry.key]++] = entry;
  entries = std::move(sorted);
}

// The entries of both sides for one line of a transaction. Matched ones are taken out.
class LineComparison {
 public:
  LineComparison(WorkTable& table, const BookedEntries& import,
                 const std::unordered_set<std::uint32_t>& pendingSales)
      : table_(table), import_(import), pendingSales_(pendingSales) {}

  void Compare(std::span<const BookedEntry> booked, std::span<const PostedEntry> posted) {
    booked_.assign(booked.begin(), booked.end());
    posted_.assign(posted.begin(), posted.end());
    Match([](const BookedEntry& one, const PostedEntry& other) { return one.amount == other.amount; });
    MatchCosts();
    // What remains on both sides is one amount in two accounts or months.
    const bool moved = !posted_.empty() && !std::ranges::all_of(booked_, IsTakenBack);
    for (const BookedEntry& entry : booked_) {
      if (const std::optional<CauseCode> cause = CauseOf(entry, moved)) Explain(*cause, entry, entry.amount);
    }
    for (const PostedEntry& entry : posted_) {
      if (const std::optional<CauseCode> cause = CauseOf(entry, moved)) Explain(*cause, entry, -entry.amount);
    }
  }

 private:
  template <typename Entry>
  void Explain(CauseCode code, const Entry& entry, const ExactAmount& amount) {
    table_.At(entry.line).months[entry.month].Explain(code, amount, {entry.transaction});
  }

  // Takes out pairs in the same account and month for which `agree` holds.
  template <typename Agree>
  void Match(Agree agree) {
    std::erase_if(booked_, [&](const BookedEntry& one) {
      const auto other = std::ranges::find_if(posted_, [&](const PostedEntry& entry) {
        return entry.line == one.line && entry.month == one.month && agree(one, entry);
      });
      if (other == posted_.end()) return false;
      posted_.erase(other);
      return true;
    });
  }

  void MatchCosts() {
    Match([&](const BookedEntry& one, const PostedEntry& other) {
      if (one.rule != BookingRule::CostOfSale || !other.isCost) return false;
      const CauseCode code = one.quantityAsOne ? CauseCode::QuantityAsOne
                             : one.costCut     ? CauseCode::TextCut
                                               : CauseCode::AverageCost;
      Explain(code, one, one.amount - other.amount);
      return true;
    });
  }

  static bool IsTakenBack(const BookedEntry& entry) noexcept {
    return entry.rule == BookingRule::BilledExpenseTakenBack;
  }

  // Return nothing for an entry of which no cause is known.
  std::optional<CauseCode> CauseOf(const BookedEntry& entry, bool moved) const {
    if (IsTakenBack(entry)) return entry.billedAgain ? CauseCode::BilledAgain : CauseCode::BilledOnce;
    if (moved) return CauseCode::OtherAccount;
    if (pendingSales_.contains(entry.transaction)) return CauseCode::PendingSale;
    return std::nullopt;
  }

  std::optional<CauseCode> CauseOf(const PostedEntry& entry, bool moved) const {
    if (!entry.kindRead) return CauseCode::KindNotRead;
    if (moved) return CauseCode::OtherAccount;
    const Group group = table_.At(entry.line).group;
    const bool otherType = group == Group::OtherIncome || group == Group::OtherExpense;
    if (otherType || (group == Group::CostOfGoods && !entry.isCost)) return CauseCode::TypeNotTaken;
    const std::optional<SkipReason> reason = import_.ReasonOf(entry.key);
    if (entry.inItemGroup && !entry.isSale) return CauseCode::ItemGroup;
    const bool takenBack = std::ranges::any_of(booked_, IsTakenBack);
    if (reason == SkipReason::ItemWithoutAccount || takenBack) return CauseCode::ItemWithoutAccount;
    if (reason == SkipReason::AccountInNoList) return CauseCode::TypeNotTaken;
    if (entry.isCost && !reason && import_.HasRead(entry.key)) return CauseCode::WithoutAmount;
    return std::nullopt;
  }

  WorkTable& table_;
  const BookedEntries& import_;
  const std::unordered_set<std::uint32_t>& pendingSales_;
  std::vector<BookedEntry> booked_;
  std::vector<PostedEntry> posted_;
};

// Returns the entries with the key at the front and removes them from `entries`.
template <typename Entry>
std::span<const Entry> Take(std::span<const Entry>& entries, std::uint32_t key) {
  std::size_t count = 0;
  while (count < entries.size() && entries[count].key == key) ++count;
  const std::span<const Entry> taken = entries.first(count);
  entries = entries.subspan(count);
  return taken;
}

// Reports contain every kind of transaction, but only the sections of ordinary income and expense.
void ExplainOtherSections(WorkTable& table, const std::vector<PostedEntry>& posted) {
  for (const PostedEntry& entry : posted) {
    const Group group = table.At(entry.line).group;
    if (group != Group::OtherIncome && group != Group::OtherExpense) continue;
    table.At(entry.line)
        .months[entry.month]
        .Explain(CauseCode::TypeNotTaken, -entry.amount, {entry.transaction});
  }
}

}  // namespace

void ExplainEntries(WorkTable& table, BookedEntries& booked, PostedEntries& posted) {
  if (booked.FromReports()) return ExplainOtherSections(table, posted.entries);
  SortByKey(booked.Entries());
  SortByKey(posted.entries);
  std::span<const BookedEntry> bookedLeft(booked.Entries());
  std::span<const PostedEntry> postedLeft(posted.entries);
  LineComparison comparison(table, booked, posted.pendingSales);
  while (!bookedLeft.empty() || !postedLeft.empty()) {
    const std::uint32_t key = postedLeft.empty()   ? bookedLeft.front().key
                              : bookedLeft.empty() ? postedLeft.front().key
                                                   : std::min(bookedLeft.front().key, postedLeft.front().key);
    const std::span<const BookedEntry> ofLine = Take(bookedLeft, key);
    comparison.Compare(ofLine, Take(postedLeft, key));
  }
}

}  // namespace krnqb::reconcile
