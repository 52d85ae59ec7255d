#include "spreadsheet/block_cells.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "plan_file/views/amounts.h"
#include "support/number_text.h"

namespace krnqb::spreadsheet {
namespace {

// Far more than any plan needs: a plan in which every cell is a sum of all others must not take hours.
constexpr std::size_t mostLookUps = 20'000'000;
// Formulas that refer to formulas further down are computed on the stack.
constexpr std::size_t deepestChain = 200;

std::optional<std::uint32_t> SheetRow(const std::string& text, std::size_t rows) {
  std::uint32_t row = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), row);
  const bool whole = failure == std::errc() && end == text.data() + text.size();
  if (!whole || row < 1 || row > mostRows || rows > mostRows - row + 1) return std::nullopt;
  return row;
}

// A number as people write it: no zeros before it, and no more digits than a sheet keeps.
std::optional<double> PlainNumber(std::string_view text) {
  constexpr std::size_t mostDigits = 15;
  const std::string_view digits = text.starts_with('-') ? text.substr(1) : text;
  const bool plain = !digits.empty() && digits.find_first_not_of("0123456789.") == std::string_view::npos &&
                     digits.front() != '.' && digits.back() != '.';
  const bool zerosBefore = digits.size() > 1 && digits[0] == '0' && digits[1] != '.';
  if (!plain || zerosBefore || digits.size() > mostDigits) return std::nullopt;
  return ConvertToDouble(text);
}

BlockCell ConstantCell(const std::string& text, plan_file::BlockKind kind, std::size_t column) {
  if (text.empty() || text == plan_file::emptyCellText) return {};
  const bool converted = column > 0 && kind != plan_file::BlockKind::Other;
  std::optional<double> number;
  if (column > 0) number = converted ? ConvertToDouble(text) : PlainNumber(text);
  if (!number) return {BlockCell::Kind::Text, text, 0};
  return {BlockCell::Kind::Number, text, *number};
}

}  // namespace

BlockCells::BlockCells(const plan_file::PlanBlock& block)
    : firstRow_(SheetRow(block.startRow, block.rows.size())) {
  const plan_file::BlockKind kind = plan_file::KindOfBlock(block.id);
  for (const plan_file::PlanRow& row : block.rows) {
    std::vector<Slot>& slots = rows_.emplace_back();
    for (std::size_t column = 0; column < row.size(); ++column) {
      if (column > 0 && plan_file::IsFormula(row[column])) {
        slots.push_back({{BlockCell::Kind::Text, row[column], 0}, firstRow_ ? State::New : State::Done});
      } else {
        slots.push_back({ConstantCell(row[column], kind, column)});
      }
    }
    width_ = std::max(width_, row.size());
  }
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    for (std::size_t column = 0; column < rows_[row].size(); ++column) Compute(row, column);
  }
}

const BlockCell& BlockCells::At(std::size_t row, std::size_t column) const noexcept {
  static const BlockCell empty;
  if (row >= rows_.size() || column >= rows_[row].size()) return empty;
  return rows_[row][column].cell;
}

bool BlockCells::IsUncomputed(std::size_t row, std::size_t column) const noexcept {
  const BlockCell& cell = At(row, column);
  return column > 0 && cell.kind == BlockCell::Kind::Text && plan_file::IsFormula(cell.text);
}

void BlockCells::Compute(std::size_t row, std::size_t column) {
  Slot& slot = rows_[row][column];
  if (slot.state != State::New) return;
  slot.state = State::Started;
  ++depth_;
  const std::optional<double> result =
      ComputeFormula(slot.cell.text, [this](const CellPlace& place) { return Find(place); });
  --depth_;
  if (result) {
    slot.cell.kind = BlockCell::Kind::Formula;
    slot.cell.number = *result;
  }
  slot.state = State::Done;
}

FoundCell BlockCells::Find(const CellPlace& place) {
  const bool inBlock =
      place.row >= *firstRow_ && place.row - *firstRow_ < rows_.size() && place.column < width_;
  if (!inBlock || ++lookUps_ > mostLookUps) return {FoundCell::Kind::Unknown};
  const std::size_t row = place.row - *firstRow_;
  if (place.column >= rows_[row].size()) return {FoundCell::Kind::Nothing};
  Slot& slot = rows_[row][place.column];
  if (slot.state == State::New && depth_ < deepestChain) Compute(row, place.column);
  if (slot.state != State::Done) return {FoundCell::Kind::Unknown};
  if (slot.cell.HasNumber()) return {FoundCell::Kind::Number, slot.cell.number};
  if (slot.cell.kind == BlockCell::Kind::Empty) return {FoundCell::Kind::Nothing};
  // A text that a sheet might take for a number, or a formula, would add up differently in a range.
  const bool unclear = plan_file::IsFormula(slot.cell.text) || ConvertToDouble(slot.cell.text);
  return {place.column > 0 && unclear ? FoundCell::Kind::Unknown : FoundCell::Kind::Text};
}

}  // namespace krnqb::spreadsheet
