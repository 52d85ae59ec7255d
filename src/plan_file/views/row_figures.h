#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "krnqb/enumerations.h"
#include "plan_file/content.h"
#include "plan_file/views/figures.h"

namespace krnqb::plan_file {

/// Where a plan has the amounts of an import.
enum class FigureSource : std::uint8_t {
  ActualCells,    ///< the cells of the actual rows
  GrowthFormulas  ///< the amounts in the formulas of the planned rows, before growth
};

/// The amounts of a row that an import can write, in the twelve months of the plan.
struct RowFigures {
  FigureGroup group = FigureGroup::Sales;
  std::int32_t row = 1;         ///< its place in its block, from 1
  std::string name = {};        ///< of the planned row; empty if it has none
  std::string actualName = {};  ///< of the actual row at the same place; empty if it has none
  bool hasActualRow = false;
  std::array<std::optional<double>, monthsOfAYear> months{};  ///< nullopt: no such cell, or not an amount

  bool operator==(const RowFigures&) const = default;
};

/// Returns the planned rows of a plan with the amounts at their places, group by group, without totals.
std::vector<RowFigures> RowFiguresOf(const PlanContent& content, QBKRNproduct product, FigureSource source);

}  // namespace krnqb::plan_file
