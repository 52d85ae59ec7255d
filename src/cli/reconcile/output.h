#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "reconcile/reconciliation.h"

namespace krnqb::cli {

/// A reconciliation with what was compared.
struct ReconcileResult {
  std::string planFile;
  std::string source;  ///< the company or recording, for people
  std::string books;   ///< where the books' amounts are from, for people; empty if they are unknown
  reconcile::Reconciliation reconciliation;
  std::vector<std::string> findings = {};  ///< about the documents of the books
  bool agrees = false;                     ///< within the tolerance
};

/// Returns an amount for people, rounded to thousandths, which are shown only where they are not 0.
std::string ShownAmount(const ExactAmount& amount);

/// Returns whether a cause is worth showing: the millionths that twelfths of a balance have are not.
bool IsShown(const reconcile::Cause& cause);

/// Returns a line's month as YYYY-MM; empty for the year.
std::string MonthOfLine(const reconcile::Reconciliation& reconciliation, const reconcile::Reconciled& line);

/// Returns one or two sentences: whether the plan agrees with the books, and how its net income differs.
std::string VerdictText(const ReconcileResult& result);

/// Returns a table of the amounts, then what every difference consists of; lines are no wider than `width`
/// where that is possible.
std::string ReconcileText(const ReconcileResult& result, std::size_t width);

/// Returns one JSON object, indented, without a line end.
std::string ReconcileJson(const ReconcileResult& result);

}  // namespace krnqb::cli
