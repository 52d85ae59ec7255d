#pragma once

#include <optional>
#include <span>
#include <vector>

#include "plan_file/history/entry.h"
#include "plan_file/views/row_figures.h"
#include "reconcile/booked_entries.h"
#include "reconcile/work_table.h"

namespace krnqb::reconcile {

/// What is known about the last import into a plan.
struct LastImport {
  bool samePeriod = true;  ///< whether it was of the months that are reconciled
  bool expenses = true;    ///< whether it included amounts of expenses
  bool income = true;      ///< whether it included amounts of sales and costs
  bool asWritten = true;   ///< whether the plan is still what the import wrote
  /// The rows that it left; nullopt if they are unknown.
  std::optional<std::vector<plan_file::WrittenRow>> rows = {};
};

/// A plan's amounts, and how they came there.
struct PlanAmounts {
  std::vector<plan_file::RowFigures> rows;
  QBKRNproduct product = QBKRN_ALD;
  std::optional<LastImport> lastImport;  ///< nullopt if no import into the plan is known
};

/// Adds a plan's amounts, and those that its last import wrote, to the work table, and explains how both
/// differ from what an import books. The bookings are in the table already; `imported` are the rows that an
/// import writes. A row belongs to the account named in its actual cells, or else in its planned ones.
void AddPlan(WorkTable& table, const PlanAmounts& plan, std::span<const ImportedRow> imported);

}  // namespace krnqb::reconcile
