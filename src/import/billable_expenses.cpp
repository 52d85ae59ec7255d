#include "import/billable_expenses.h"

#include "krnqb/keyed_collection.h"

namespace krnqb {

std::pair<BillableExpense*, bool> BillableExpenses::Add(const BillableExpense& expense,
                                                        std::string_view key) {
  const std::string folded = FoldedKey(key);
  if (const auto present = expenses_.find(folded); present != expenses_.end())
    return {&present->second, false};
  BillableExpense added = expense;
  added.account = *accounts_.emplace(expense.account).first;
  return {&expenses_.emplace(keys_.Keep(folded), added).first->second, true};
}

BillableExpense* BillableExpenses::Find(std::string_view key) {
  const auto found = expenses_.find(FoldedKey(key));
  return found == expenses_.end() ? nullptr : &found->second;
}

}  // namespace krnqb
