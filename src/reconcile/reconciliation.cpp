#include "reconcile/reconciliation.h"

#include <algorithm>
#include <set>

#include "krnqb/keyed_collection.h"

namespace krnqb::reconcile {
namespace {

constexpr std::int64_t halfCent = 5'000;  // in millionths

ExactAmount Absolute(const ExactAmount& amount) {
  return amount.Millionths() < 0 ? -amount : amount;
}

// Returns whether there is anything to show. Without books, causes beyond the bookings say nothing.
bool HasAmounts(const MonthAmounts& month, bool hasBooks) {
  if (!month.plan.IsZero() || !month.written.IsZero() || !month.booked.IsZero()) return true;
  return hasBooks && (!month.books.IsZero() || !month.causes.empty());
}

// Sums of a line, a group or the whole.
class Sum {
 public:
  void Add(const MonthAmounts& month, bool subtracted = false) {
    const auto add = [&](ExactAmount& sum, const ExactAmount& amount) {
      sum += subtracted ? -amount : amount;
    };
    add(plan_, month.plan);
    add(written_, month.written);
    add(booked_, month.booked);
    add(books_, month.books);
    for (const auto& [cause, part] : month.causes) {
      CauseSum& sum = causes_[cause];
      add(sum.amount, part.amount);
      sum.transactions.insert(sum.transactions.end(), part.transactions.begin(), part.transactions.end());
    }
  }

  Reconciled Result(bool hasBooks, const TextNumbers& names) const {
    Reconciled result;
    result.plan = plan_;
    result.written = written_;
    result.booked = booked_;
    if (hasBooks) result.books = books_;
    result.difference = plan_ - (hasBooks ? books_ : booked_);
    ExactAmount rest = result.difference;
    for (const auto& [cause, part] : causes_) {
      if (part.amount.IsZero()) continue;
      if (!hasBooks && cause.first >= CauseCode::SpreadBalance) continue;
      rest -= part.amount;
      result.causes.push_back({.code = cause.first,
                               .type = cause.second,
                               .amount = part.amount,
                               .transactions = Names(part.transactions, names)});
    }
    if (!rest.IsZero() && Absolute(rest).Millionths() < halfCent) {
      result.causes.push_back({.code = CauseCode::Rounding, .amount = rest});
      rest = ExactAmount();
    }
    result.unexplained = rest;
    return result;
  }

 private:
  static std::vector<std::string> Names(const std::vector<std::uint32_t>& numbers, const TextNumbers& names) {
    std::vector<std::string> texts;
    std::set<std::uint32_t> seen;
    for (const std::uint32_t number : numbers) {
      if (seen.insert(number).second) texts.emplace_back(names.TextOf(number));
    }
    return texts;
  }

  ExactAmount plan_;
  ExactAmount written_;
  ExactAmount booked_;
  ExactAmount books_;
  CauseSums causes_;
};

// The lines of a group by name.
std::vector<const WorkTable::Line*> LinesOf(const WorkTable& table, Group group) {
  std::vector<const WorkTable::Line*> lines;
  for (const WorkTable::Line& line : table.Lines()) {
    if (line.group == group) lines.push_back(&line);
  }
  std::ranges::sort(lines, {}, [](const WorkTable::Line* line) { return FoldedKey(line->account); });
  return lines;
}

// Adds an account's line of the year, or those of its months. A year of 0.00 may have months with amounts.
void AppendLines(Reconciliation& reconciliation, const WorkTable& table, const WorkTable::Line& line,
                 std::optional<BooksPeriods> books, LinePeriods periods) {
  const bool hasBooks = books.has_value();
  const auto append = [&](const Sum& sum, std::optional<std::int16_t> month, bool booksKnown) {
    Reconciled& result = reconciliation.lines.emplace_back(sum.Result(booksKnown, table.transactions));
    result.group = line.group;
    result.account = line.account;
    result.month = month;
  };
  Sum year;
  bool any = false;
  for (std::size_t month = 0; month < monthsOfAYear; ++month) {
    year.Add(line.months[month]);
    if (!HasAmounts(line.months[month], hasBooks)) continue;
    any = true;
    if (periods == LinePeriods::Years) continue;
    Sum sum;
    sum.Add(line.months[month]);
    append(sum, static_cast<std::int16_t>(month + 1), books == BooksPeriods::Months);
  }
  if (any && periods == LinePeriods::Years) append(year, std::nullopt, hasBooks);
}

}  // namespace

Reconciliation Summarize(const WorkTable& table, const YearMonth& start, std::optional<BooksPeriods> books,
                         LinePeriods lines) {
  Reconciliation reconciliation;
  reconciliation.start = start;
  reconciliation.hasBooks = books.has_value();
  Sum whole;
  for (const Group group : groups) {
    Sum total;
    const std::size_t before = reconciliation.lines.size();
    for (const WorkTable::Line* const line : LinesOf(table, group)) {
      for (const MonthAmounts& month : line->months) {
        total.Add(month);
        whole.Add(month, !AddsToNetIncome(group));
      }
      AppendLines(reconciliation, table, *line, books, lines);
    }
    if (reconciliation.lines.size() == before) continue;
    reconciliation.totals.push_back(total.Result(reconciliation.hasBooks, table.transactions));
    reconciliation.totals.back().group = group;
  }
  reconciliation.whole = whole.Result(reconciliation.hasBooks, table.transactions);
  return reconciliation;
}

bool Agrees(const Reconciliation& reconciliation, const ExactAmount& tolerance) {
  const auto agrees = [&](const Reconciled& line) { return Absolute(line.difference) <= tolerance; };
  return std::ranges::all_of(reconciliation.lines, agrees) &&
         std::ranges::all_of(reconciliation.totals, agrees) && agrees(reconciliation.whole);
}

}  // namespace krnqb::reconcile
