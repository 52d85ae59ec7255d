#include "plan_file/growth_formula.h"

#include <charconv>

#include "support/number_text.h"

namespace krnqb::plan_file {
namespace {

std::optional<std::int64_t> WholeNumber(std::string_view text) noexcept {
  std::int64_t number = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (failure != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return number;
}

// The rate is a number, or empty in rows that have not been given one.
std::optional<double> RateOf(const PlanRow& row) {
  constexpr std::size_t rateColumn = 1;
  if (row.size() <= rateColumn || row[rateColumn].empty() || row[rateColumn] == emptyCellText) return 0.0;
  return ConvertToDouble(row[rateColumn]);
}

}  // namespace

std::optional<GrowthFormula> ParseGrowthFormula(std::string_view cell) {
  constexpr std::string_view joint = "* (1 + B";
  const std::size_t at = cell.find(joint);
  if (at == std::string_view::npos || !IsFormula(cell) || !cell.ends_with(')')) return std::nullopt;
  std::string_view amount = cell.substr(1, at - 1);
  if (amount.ends_with(' ')) amount.remove_suffix(1);
  if (amount.empty() || amount.find_first_not_of("-0123456789.E+") != std::string_view::npos) {
    return std::nullopt;
  }
  std::string_view row = cell.substr(at + joint.size());
  row.remove_suffix(1);
  const std::optional<double> number = ConvertToDouble(amount);
  const std::optional<std::int64_t> rateRow = WholeNumber(row);
  if (!number || !rateRow) return std::nullopt;
  return GrowthFormula{*number, *rateRow};
}

std::optional<double> GrownAmount(const PlanBlock& block, std::size_t row, std::string_view cell) {
  if (!IsFormula(cell) || row >= block.rows.size()) return std::nullopt;
  const std::optional<GrowthFormula> formula = ParseGrowthFormula(cell);
  const std::optional<std::int64_t> firstRow = WholeNumber(block.startRow);
  const std::optional<double> rate = RateOf(block.rows[row]);
  if (!formula || !firstRow || *firstRow < 1 || !rate) return std::nullopt;
  const bool ownRow =
      formula->rateRow >= *firstRow && static_cast<std::uint64_t>(formula->rateRow - *firstRow) == row;
  if (!ownRow) return std::nullopt;
  return formula->amount * (1 + *rate);
}

}  // namespace krnqb::plan_file
