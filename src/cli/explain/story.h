#pragma once

#include <optional>
#include <vector>

#include "ledger/figures.h"

namespace krnqb::cli {

struct SumStory;

/// An amount that was added to a sum, with what it comes from.
struct StoryLine {
  ledger::LedgerBooking booking;
  bool replaced = false;  ///< a later booking sets the sum, so this one is not part of it
  std::optional<ledger::LedgerLine> line = {};
  std::optional<ledger::LedgerDocument> document = {};
  std::vector<SumStory> months;  ///< of the rule `PeriodTotal`: what the account's months are made of
};

/// What a sum is made of, in the order in which it was added.
struct SumStory {
  ledger::LedgerSlot slot;
  bool subtracted = false;  ///< from the figure
  double sum = 0;
  std::vector<StoryLine> lines = {};
};

/// Returns what a figure is made of: its sums. Amounts that only begin a period at 0 are left out, as are
/// figures of a period that were replaced, and accounts for which nothing was booked in the period.
std::vector<SumStory> StoryOf(const ledger::LedgerFile& ledger, const ledger::Figure& figure);

}  // namespace krnqb::cli
