#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "xml/text_arena.h"

namespace krnqb {

/// An expense that a sale may bill to its customer.
struct BillableExpense {
  std::string_view account;    ///< the account's id or a cost-of-goods marker
  std::int32_t booked = 1;     ///< expenses with the same customer and amount; only the first one counts
  std::int32_t takenBack = 0;  ///< sales that billed it
  std::int64_t line = 0;       ///< the number of its line, if bookings are received
};

/// The billable expenses of an import by key: the customer's id, a comma and the amount's text. Keys
/// differing only in case are the same. A company may have tens of thousands of them, so each takes few
/// bytes.
class BillableExpenses {
 public:
  std::size_t Count() const noexcept { return expenses_.size(); }

  /// Adds an expense with a copy of its account, unless there is one under the key. Returns that under the
  /// key, owned by the object, and whether it was added.
  std::pair<BillableExpense*, bool> Add(const BillableExpense& expense, std::string_view key);

  /// Returns the expense with this key, owned by the object, or null.
  BillableExpense* Find(std::string_view key);

 private:
  TextArena keys_;
  std::unordered_set<std::string> accounts_;
  std::unordered_map<std::string_view, BillableExpense> expenses_;
};

}  // namespace krnqb
