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

/// Returns a table of the amounts, then what every difference consists of; lines are no wider than `width`
/// where that is possible.
std::string ReconcileText(const ReconcileResult& result, std::size_t width);

/// Returns one JSON object, indented, without a line end.
std::string ReconcileJson(const ReconcileResult& result);

}  // namespace krnqb::cli
