#include "cli/console/text_table.h"

#include <algorithm>
#include <utility>

#include "cli/console/control_characters.h"
#include "support/characters.h"

namespace krnqb::cli {
namespace {

constexpr std::string_view columnGap = "  ";

// In characters. A wider cell is printed in full; the others are not padded to it.
constexpr std::size_t widestColumn = 100;

}  // namespace

void TextTable::AddRow(std::vector<std::string> cells) {
  for (std::string& cell : cells) cell = OneLine(cell);
  rows_.push_back(std::move(cells));
}

std::string TextTable::Text(std::string_view indent) const {
  const std::vector<std::size_t> widths = ColumnWidths();
  std::string text;
  for (const std::vector<std::string>& row : rows_) {
    std::string line(indent);
    for (std::size_t column = 0; column < row.size(); ++column) {
      if (column > 0) line += columnGap;
      const std::size_t width = CharacterCount(row[column]);
      const std::string padding(widths[column] - std::min(widths[column], width), ' ');
      const bool right = alignments_[column] == Alignment::Right;
      line += right ? padding + row[column] : row[column] + padding;
    }
    line.erase(line.find_last_not_of(' ') + 1);
    text += line + '\n';
  }
  return text;
}

std::vector<std::size_t> TextTable::ColumnWidths() const {
  std::vector<std::size_t> widths(alignments_.size());
  for (const std::vector<std::string>& row : rows_) {
    for (std::size_t column = 0; column < row.size(); ++column) {
      const std::size_t width = CharacterCount(row[column]);
      if (width <= widestColumn) widths[column] = std::max(widths[column], width);
    }
  }
  return widths;
}

std::string OneLine(std::string_view text) {
  std::string line;
  bool afterControl = false;
  while (!text.empty()) {
    if (const std::size_t plain = PlainLength(text); plain > 0) {
      line += text.substr(0, plain);
      text.remove_prefix(plain);
      afterControl = false;
      continue;
    }
    const TextPart part = TakePart(text);
    const bool control = IsControl(part.character);
    if (control && !afterControl) line += ' ';
    if (!control) line += part.bytes;
    afterControl = control;
  }
  return line;
}

}  // namespace krnqb::cli
