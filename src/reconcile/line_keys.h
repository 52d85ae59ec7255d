#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "reconcile/text_numbers.h"

namespace krnqb::reconcile {

/// The lines of transactions, numbered so that the import's and the ledger's view of a line have one number.
/// The lines of a transaction that have no id share a number.
class LineKeys {
 public:
  /// Returns the number of a line, from 0.
  std::uint32_t NumberOf(std::string_view transactionId, std::string_view lineId) {
    scratch_.assign(transactionId).push_back('\n');
    scratch_.append(lineId);
    return numbers_.NumberOf(scratch_);
  }

 private:
  TextNumbers numbers_;
  std::string scratch_;
};

}  // namespace krnqb::reconcile
