#include "reconcile/group.h"

namespace krnqb::reconcile {

std::string_view GroupTitle(Group group) noexcept {
  constexpr std::array<std::string_view, groups.size()> titles{"Sales", "Cost of goods", "Expenses",
                                                               "Other income", "Other expense"};
  return titles[static_cast<std::size_t>(group)];
}

std::string_view GroupWord(Group group) noexcept {
  constexpr std::array<std::string_view, groups.size()> words{"sales", "cost-of-goods", "expenses",
                                                              "other-income", "other-expense"};
  return words[static_cast<std::size_t>(group)];
}

std::optional<Group> GroupOfType(std::string_view accountType) noexcept {
  constexpr std::array<std::string_view, groups.size()> types{"Income", "CostOfGoodsSold", "Expense",
                                                              "OtherIncome", "OtherExpense"};
  for (const Group group : groups) {
    if (types[static_cast<std::size_t>(group)] == accountType) return group;
  }
  return std::nullopt;
}

std::optional<Group> GroupOfSums(AmountGroup group) noexcept {
  switch (group) {
    case AmountGroup::Income:
      return Group::Sales;
    case AmountGroup::CostOfGoods:
      return Group::CostOfGoods;
    case AmountGroup::Expenses:
      return Group::Expenses;
    case AmountGroup::PastPerformance:
      break;
  }
  return std::nullopt;
}

}  // namespace krnqb::reconcile
