#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

#include "krnqb/booking.h"

namespace krnqb::reconcile {

/// The sections of a profit and loss. A plan has the first three.
enum class Group : std::uint8_t { Sales, CostOfGoods, Expenses, OtherIncome, OtherExpense };

inline constexpr std::array groups{Group::Sales, Group::CostOfGoods, Group::Expenses, Group::OtherIncome,
                                   Group::OtherExpense};

/// Returns the heading of a group, such as "Cost of goods".
std::string_view GroupTitle(Group group) noexcept;
/// Returns the stable word of a group, such as "cost-of-goods".
std::string_view GroupWord(Group group) noexcept;

/// Returns whether a group's amounts are added to the net income; the others are subtracted.
constexpr bool AddsToNetIncome(Group group) noexcept {
  return group == Group::Sales || group == Group::OtherIncome;
}

/// Returns the group of an account type; nullopt if accounts of that type are not in a profit and loss.
std::optional<Group> GroupOfType(std::string_view accountType) noexcept;
/// Returns the group of the sums of an import; nullopt for past performance.
std::optional<Group> GroupOfSums(AmountGroup group) noexcept;

}  // namespace krnqb::reconcile
