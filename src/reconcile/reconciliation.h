#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "reconcile/books_causes.h"
#include "reconcile/cause.h"
#include "reconcile/group.h"
#include "reconcile/posted_entries.h"
#include "reconcile/work_table.h"
#include "support/exact_amount.h"
#include "support/year_month.h"

namespace krnqb::reconcile {

/// The amounts of an account, a group or the whole, for a year or a month, with what explains why the plan
/// differs from the books. Plan, difference, causes and the unexplained rest add up exactly:
/// plan - books = difference = causes + unexplained.
struct Reconciled {
  Group group = Group::Sales;
  std::string account;                ///< a top-level account; empty for a group or the whole
  std::optional<std::int16_t> month;  ///< 1 to 12 from the first month; nullopt for the year
  ExactAmount plan;                   ///< the plan's actual amount
  ExactAmount written;                ///< what the last import wrote
  ExactAmount booked;                 ///< what an import books now
  std::optional<ExactAmount> books;   ///< the books' own amount; nullopt if it is unknown
  /// Plan less books; if these are unknown, plan less what an import books.
  ExactAmount difference;
  std::vector<Cause> causes;  ///< in the order of `CauseCode`, without those that amount to 0
  ExactAmount unexplained;
};

/// A plan's amounts of twelve months compared with the books.
struct Reconciliation {
  YearMonth start;
  bool hasBooks = false;
  std::vector<Reconciled> lines;   ///< by group and name; accounts without any amount are omitted
  std::vector<Reconciled> totals;  ///< of the groups that have lines, by year
  Reconciled whole;                ///< net income
  std::vector<UnexplainedBalance> balances;
};

enum class LinePeriods : std::uint8_t { Years, Months };

/// Adds up a finished work table. `books` is nullopt if the books are unknown. If they are known only for the
/// year, lines of months have no books.
Reconciliation Summarize(const WorkTable& table, const YearMonth& start, std::optional<BooksPeriods> books,
                         LinePeriods lines);

/// Returns whether every line's and group's difference is at most `tolerance`.
bool Agrees(const Reconciliation& reconciliation, const ExactAmount& tolerance);

}  // namespace krnqb::reconcile
