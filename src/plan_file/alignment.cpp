#include "plan_file/alignment.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>

namespace krnqb::plan_file {
namespace {

// The cost of an alignment: an unmatched row costs more than any number of changed cells.
struct Cost {
  std::size_t unmatched = 0;
  std::size_t changed = 0;

  auto operator<=>(const Cost&) const = default;
  Cost operator+(const Cost& other) const noexcept {
    return {unmatched + other.unmatched, changed + other.changed};
  }
};

// A range of rows in both states; the ends are exclusive.
struct Part {
  std::size_t beforeBegin;
  std::size_t beforeEnd;
  std::size_t afterBegin;
  std::size_t afterEnd;

  std::size_t BeforeCount() const noexcept { return beforeEnd - beforeBegin; }
  std::size_t AfterCount() const noexcept { return afterEnd - afterBegin; }
};

constexpr std::size_t exhaustiveLimit = 10000;  // pairs of rows

bool SameCell(std::string_view before, std::string_view after) noexcept {
  return before == after || (IsFormula(before) && after == emptyCellText);
}

bool SameName(const PlanRow& before, const PlanRow& after) noexcept {
  if (before.empty() || after.empty()) return before.empty() && after.empty();
  return SameCell(before[0], after[0]);
}

class RowMatcher {
 public:
  RowMatcher(const std::vector<PlanRow>& before, const std::vector<PlanRow>& after)
      : before_(before), after_(after), partners_(after.size()) {}

  std::vector<std::optional<std::size_t>> Match() {
    const Part changed = WithoutEqualEnds({0, before_.size(), 0, after_.size()});
    Part open = changed;
    for (const auto& [beforeRow, afterRow] : RowsKnownByName(changed)) {
      MatchBetween({open.beforeBegin, beforeRow, open.afterBegin, afterRow});
      partners_[afterRow] = beforeRow;
      open.beforeBegin = beforeRow + 1;
      open.afterBegin = afterRow + 1;
    }
    MatchBetween(open);
    return std::move(partners_);
  }

 private:
  using Pair = std::pair<std::size_t, std::size_t>;  // the indexes of one row, before and after

  bool Equal(std::size_t beforeRow, std::size_t afterRow) const noexcept {
    return CellsChanged(before_[beforeRow], after_[afterRow]) == 0;
  }

  Cost PairCost(std::size_t beforeRow, std::size_t afterRow) const noexcept {
    if (!SameName(before_[beforeRow], after_[afterRow])) return {2, 0};
    return {0, CellsChanged(before_[beforeRow], after_[afterRow])};
  }

  Part WithoutEqualEnds(Part part) {
    while (part.BeforeCount() > 0 && part.AfterCount() > 0 && Equal(part.beforeBegin, part.afterBegin)) {
      partners_[part.afterBegin++] = part.beforeBegin++;
    }
    while (part.BeforeCount() > 0 && part.AfterCount() > 0 && Equal(part.beforeEnd - 1, part.afterEnd - 1)) {
      partners_[--part.afterEnd] = --part.beforeEnd;
    }
    return part;
  }

  std::vector<Pair> RowsKnownByName(const Part& part) const;
  static std::vector<Pair> LongestRising(const std::vector<Pair>& pairs);
  void MatchBetween(const Part& part);
  void MatchExhaustively(const Part& part);
  void MatchAroundOneGap(const Part& part);

  const std::vector<PlanRow>& before_;
  const std::vector<PlanRow>& after_;
  std::vector<std::optional<std::size_t>> partners_;
};

// Rows whose name occurs once in each state are the same row, as long as their order is the same too.
std::vector<RowMatcher::Pair> RowMatcher::RowsKnownByName(const Part& part) const {
  struct Places {
    std::size_t timesBefore = 0;
    std::size_t timesAfter = 0;
    std::size_t rowAfter = 0;
  };
  std::unordered_map<std::string_view, Places> names;
  const auto named = [](const PlanRow& row) {
    return !row.empty() && !row[0].empty() && row[0] != emptyCellText && !IsFormula(row[0]);
  };
  for (std::size_t row = part.beforeBegin; row < part.beforeEnd; ++row) {
    if (named(before_[row])) ++names[before_[row][0]].timesBefore;
  }
  for (std::size_t row = part.afterBegin; row < part.afterEnd; ++row) {
    if (!named(after_[row])) continue;
    Places& places = names[after_[row][0]];
    ++places.timesAfter;
    places.rowAfter = row;
  }
  std::vector<Pair> pairs;
  for (std::size_t row = part.beforeBegin; row < part.beforeEnd; ++row) {
    if (!named(before_[row])) continue;
    const Places& places = names[before_[row][0]];
    if (places.timesBefore == 1 && places.timesAfter == 1) pairs.emplace_back(row, places.rowAfter);
  }
  return LongestRising(pairs);
}

// Returns the longest sequence that increases in the second row too; `pairs` increases in the first.
std::vector<RowMatcher::Pair> RowMatcher::LongestRising(const std::vector<Pair>& pairs) {
  constexpr auto none = static_cast<std::size_t>(-1);
  std::vector<std::size_t> lastOfLength;  // for length + 1, the end with the lowest second row
  std::vector<std::size_t> previous(pairs.size(), none);
  for (std::size_t index = 0; index < pairs.size(); ++index) {
    const auto place =
        std::lower_bound(lastOfLength.begin(), lastOfLength.end(), pairs[index].second,
                         [&](std::size_t last, std::size_t second) { return pairs[last].second < second; });
    if (place != lastOfLength.begin()) previous[index] = *std::prev(place);
    if (place == lastOfLength.end()) {
      lastOfLength.push_back(index);
    } else {
      *place = index;
    }
  }
  std::vector<Pair> rising;
  for (std::size_t index = lastOfLength.empty() ? none : lastOfLength.back(); index != none;
       index = previous[index]) {
    rising.push_back(pairs[index]);
  }
  std::reverse(rising.begin(), rising.end());
  return rising;
}

void RowMatcher::MatchBetween(const Part& part) {
  if (part.BeforeCount() == 0 || part.AfterCount() == 0) return;
  if (part.BeforeCount() <= exhaustiveLimit / part.AfterCount()) {
    MatchExhaustively(part);
  } else {
    MatchAroundOneGap(part);
  }
}

void RowMatcher::MatchExhaustively(const Part& part) {
  const std::size_t rows = part.BeforeCount();
  const std::size_t columns = part.AfterCount();
  // costs[i][j]: the lowest cost of matching the first i rows before with the first j rows after.
  std::vector<Cost> costs((rows + 1) * (columns + 1));
  const auto at = [&](std::size_t row, std::size_t column) -> Cost& {
    return costs[row * (columns + 1) + column];
  };
  const auto paired = [&](std::size_t row, std::size_t column) {
    return at(row - 1, column - 1) + PairCost(part.beforeBegin + row - 1, part.afterBegin + column - 1);
  };
  for (std::size_t row = 0; row <= rows; ++row) at(row, 0) = {row, 0};
  for (std::size_t column = 0; column <= columns; ++column) at(0, column) = {column, 0};
  for (std::size_t row = 1; row <= rows; ++row) {
    for (std::size_t column = 1; column <= columns; ++column) {
      const Cost alone = std::min(at(row - 1, column), at(row, column - 1)) + Cost{1, 0};
      at(row, column) = std::min(alone, paired(row, column));
    }
  }
  std::size_t row = rows;
  std::size_t column = columns;
  while (row > 0 && column > 0) {
    if (at(row, column) == at(row, column - 1) + Cost{1, 0}) {
      --column;
    } else if (at(row, column) == at(row - 1, column) + Cost{1, 0}) {
      --row;
    } else {
      --row;
      --column;
      partners_[part.afterBegin + column] = part.beforeBegin + row;
    }
  }
}

// Assumes that all added, or all removed, rows are adjacent, and tries every place for them.
void RowMatcher::MatchAroundOneGap(const Part& part) {
  const std::size_t shorter = std::min(part.BeforeCount(), part.AfterCount());
  const std::size_t skippedBefore = part.BeforeCount() - shorter;
  const std::size_t skippedAfter = part.AfterCount() - shorter;
  // The cost of the rows below the gap, by the number of rows above it.
  std::vector<Cost> below(shorter + 1);
  for (std::size_t row = shorter; row > 0; --row) {
    below[row - 1] = below[row] + PairCost(part.beforeBegin + skippedBefore + row - 1,
                                           part.afterBegin + skippedAfter + row - 1);
  }
  Cost above;
  Cost best = below[0];
  std::size_t gap = 0;
  for (std::size_t row = 1; row <= shorter; ++row) {
    above = above + PairCost(part.beforeBegin + row - 1, part.afterBegin + row - 1);
    if (above + below[row] <= best) {
      best = above + below[row];
      gap = row;
    }
  }
  for (std::size_t row = 0; row < shorter; ++row) {
    const std::size_t beforeRow = part.beforeBegin + row + (row < gap ? 0 : skippedBefore);
    const std::size_t afterRow = part.afterBegin + row + (row < gap ? 0 : skippedAfter);
    if (SameName(before_[beforeRow], after_[afterRow])) partners_[afterRow] = beforeRow;
  }
}

}  // namespace

std::size_t CellsChanged(const PlanRow& before, const PlanRow& after) noexcept {
  const std::size_t common = std::min(before.size(), after.size());
  std::size_t changed = std::max(before.size(), after.size()) - common;
  for (std::size_t column = 0; column < common; ++column) {
    if (!SameCell(before[column], after[column])) ++changed;
  }
  return changed;
}

std::vector<std::optional<std::size_t>> MatchRows(const std::vector<PlanRow>& before,
                                                  const std::vector<PlanRow>& after) {
  return RowMatcher(before, after).Match();
}

}  // namespace krnqb::plan_file
