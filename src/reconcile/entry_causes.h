#pragma once

#include "reconcile/booked_entries.h"
#include "reconcile/posted_entries.h"
#include "reconcile/work_table.h"

namespace krnqb::reconcile {

/// Explains how the bookings of an import differ from what the loaded transactions post, line by line. Sorts
/// both sides.
void ExplainEntries(WorkTable& table, BookedEntries& booked, PostedEntries& posted);

}  // namespace krnqb::reconcile
