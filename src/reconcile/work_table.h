#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "reconcile/cause.h"
#include "reconcile/group.h"
#include "reconcile/text_numbers.h"
#include "support/text_map.h"

namespace krnqb::reconcile {

inline constexpr std::size_t monthsOfAYear = 12;

/// A part of a difference.
struct CauseSum {
  ExactAmount amount;
  std::vector<std::uint32_t> transactions;  ///< may contain a number more than once
};
/// By cause and type, see `Cause`.
using CauseSums = std::map<std::pair<CauseCode, std::string>, CauseSum>;

/// The amounts of an account in one month, from the plan to the books, and what explains their differences.
struct MonthAmounts {
  ExactAmount plan;     ///< what the plan holds
  ExactAmount written;  ///< what the last import wrote
  ExactAmount booked;   ///< what an import books
  ExactAmount ledger;   ///< what the loaded transactions post
  ExactAmount books;    ///< the profit and loss; of all months together if it has no months
  CauseSums causes;

  /// Adds to a cause; an amount of 0 is ignored. `transactions` are those concerned.
  void Explain(CauseCode code, const ExactAmount& amount, const std::vector<std::uint32_t>& transactions = {},
               const std::string& type = {});
};

/// The accounts of a reconciliation: a line per top-level account of a group. Accounts are found by name,
/// case-insensitively.
class WorkTable {
 public:
  struct Line {
    Group group = Group::Sales;
    std::string account;
    std::array<MonthAmounts, monthsOfAYear> months;
  };

  /// Returns the index of an account's line, which is added if it is new.
  std::size_t LineOf(Group group, std::string_view account);
  /// Returns the index of an account's line, or nullopt.
  std::optional<std::size_t> Find(Group group, std::string_view account) const;

  Line& At(std::size_t line) { return lines_[line]; }
  const Line& At(std::size_t line) const { return lines_[line]; }
  std::vector<Line>& Lines() noexcept { return lines_; }
  const std::vector<Line>& Lines() const noexcept { return lines_; }

  /// The transactions that are mentioned.
  TextNumbers transactions;

 private:
  std::vector<Line> lines_;
  std::map<std::pair<Group, std::string>, std::size_t> positions_;  // by folded name
  std::array<TextMap<std::size_t>, groups.size()> spellings_;       // positions by name, as asked for
};

}  // namespace krnqb::reconcile
