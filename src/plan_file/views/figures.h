#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "krnqb/enumerations.h"
#include "plan_file/content.h"
#include "plan_file/views/amounts.h"

namespace krnqb::plan_file {

/// The groups of rows that an import writes, in the order in which a plan adds them up.
enum class FigureGroup : std::uint8_t { Sales, Costs, Expenses };

inline constexpr std::array figureGroups{FigureGroup::Sales, FigureGroup::Costs, FigureGroup::Expenses};

/// Returns "Sales", "Cost of goods" or "Expenses".
std::string_view GroupTitle(FigureGroup group) noexcept;

/// Returns the id of the block that holds a group's planned rows, or its actual rows (`kind` is one of the
/// two), in a plan of a product.
std::string_view GroupBlockId(FigureGroup group, QBKRNproduct product, BlockKind kind) noexcept;

/// Returns the plan's first block with that id, or null. The block belongs to `content`.
const PlanBlock* FindBlock(const PlanContent& content, std::string_view blockId) noexcept;

/// Returns whether a row of a planned or actual block is one of its totals. They are among the closing rows,
/// below which an import adds nothing: the last row, or the last two of expenses. One of these is a total if
/// any of its months is a formula other than growth, or its name begins with "Total". Depreciation is not a
/// total.
bool IsTotalRow(const PlanBlock& block, std::size_t row);

/// The sum of a group's rows, without totals.
struct GroupFigures {
  YearAmounts amounts;
  std::vector<std::string>
      unreadRows;  ///< names of rows with months that the sum lacks: texts, other formulas

  bool operator==(const GroupFigures&) const = default;
};

/// The figures of a plan's planned or actual year; groups that the plan does not have are absent.
struct PlanFigures {
  std::array<std::optional<GroupFigures>, figureGroups.size()> groups;

  /// Returns sales less the cost of goods and expenses.
  YearAmounts Result() const noexcept;
  bool operator==(const PlanFigures&) const = default;
};

PlanFigures FiguresOf(const PlanContent& content, QBKRNproduct product, BlockKind kind);

}  // namespace krnqb::plan_file
