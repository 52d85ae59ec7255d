#pragma once

#include <vector>

#include "reconcile/booked_entries.h"
#include "reconcile/posted_entries.h"
#include "reconcile/work_table.h"

namespace krnqb::reconcile {

/// Explains how the bookings of an import differ from what the loaded transactions post, line by line. Sorts
/// both.
void ExplainEntries(WorkTable& table, BookedEntries& booked, std::vector<PostedEntry>& posted);

}  // namespace krnqb::reconcile
