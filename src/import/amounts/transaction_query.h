#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "import/amounts/date_ranges.h"
#include "krnqb/observer.h"

namespace krnqb {

/// The query for one month's transactions of one kind.
struct TransactionQuery {
  std::int32_t kind = 0;   ///< the request's number in the catalogue: 10, 11, 12, 20 or 21
  std::string request;     ///< the whole qbXML document
  std::int16_t month = 0;  ///< the slot for the amounts: 1 to 12, counted from the import's first month
  DateRange range;         ///< the month's first and last day

  /// Returns the place of an operation on this query, for notices.
  Place At(Operation operation) const {
    return {.operation = operation, .request = kind, .fromDate = range.fromDate, .toDate = range.toDate};
  }
};

}  // namespace krnqb
