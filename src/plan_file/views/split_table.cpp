#include "plan_file/views/split_table.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "support/display_width.h"

namespace krnqb::plan_file {
namespace {

constexpr std::size_t leastWidth = 20;
constexpr std::size_t columnsOfAYear = 12;
constexpr std::array<std::size_t, 6> partsOfAYear{1, 2, 3, 4, 6, 12};

// Columns of cells, counted from 0 after the name.
struct Part {
  std::size_t first = 0;
  std::size_t end = 0;
};

class Splitting {
 public:
  Splitting(const std::vector<TableLine>& lines, const TableLayout& layout)
      : lines_(lines), layout_(layout), width_(std::max(layout.width, leastWidth)) {
    MeasureNames();
    MeasureCells();
    parts_ = YearParts();
    if (parts_.empty()) parts_ = FullParts();
  }

  std::size_t PartCount() const noexcept { return parts_.size(); }

  std::string Text() const {
    std::string text;
    for (const Part& part : parts_) {
      if (!text.empty()) text += '\n';
      for (const TableLine& line : lines_) {
        const bool hasCells = line.texts.size() > part.first + 1;
        if (hasCells || line.inEveryPart || part.first == 0) text += LineText(line, part);
      }
    }
    return text;
  }

 private:
  void MeasureNames() {
    for (const TableLine& line : lines_) {
      if (line.texts.size() > 1) nameWidth_ = std::max(nameWidth_, DisplayWidth(line.texts.front()));
    }
    nameWidth_ = std::min(nameWidth_, width_ / 2);
    const std::size_t taken = layout_.indent.size() + nameWidth_;
    room_ = width_ - std::min(width_, taken);
  }

  void MeasureCells() {
    const std::size_t widest = room_ - std::min(room_, layout_.gap);
    for (const TableLine& line : lines_) {
      if (line.texts.size() > widths_.size() + 1) widths_.resize(line.texts.size() - 1);
      for (std::size_t column = 1; column < line.texts.size(); ++column) {
        std::size_t& width = widths_[column - 1];
        width = std::max(width, std::min(widest, DisplayWidth(line.texts[column])));
      }
    }
  }

  bool Fits(const Part& part) const {
    std::size_t needed = (part.end - part.first) * layout_.gap;
    for (std::size_t column = part.first; column < part.end; ++column) needed += widths_[column];
    return needed <= room_;
  }

  // Returns nothing if the table shows no year, or a month does not fit into a line.
  std::vector<Part> YearParts() const {
    const std::size_t others = layout_.columnsBefore + layout_.columnsAfter;
    if (widths_.size() != columnsOfAYear + others) return {};
    for (const std::size_t count : partsOfAYear) {
      std::vector<Part> parts;
      const std::size_t months = columnsOfAYear / count;
      for (std::size_t part = 0; part < count; ++part) {
        // The first and the last part have the columns around the year as well.
        const std::size_t first = layout_.columnsBefore + part * months;
        parts.push_back({part == 0 ? 0 : first, part + 1 == count ? widths_.size() : first + months});
      }
      if (std::all_of(parts.begin(), parts.end(), [&](const Part& part) { return Fits(part); })) return parts;
    }
    return {};
  }

  // As many columns to a part as fit, at least one.
  std::vector<Part> FullParts() const {
    std::vector<Part> parts{{0, 0}};
    std::size_t needed = 0;
    for (std::size_t column = 0; column < widths_.size(); ++column) {
      needed += layout_.gap + widths_[column];
      if (needed > room_ && parts.back().end > parts.back().first) {
        parts.push_back({column, column});
        needed = layout_.gap + widths_[column];
      }
      parts.back().end = column + 1;
    }
    return parts;
  }

  std::string LineText(const TableLine& line, const Part& part) const {
    std::string text(layout_.indent);
    const std::string_view name = line.texts.empty() ? std::string_view() : line.texts.front();
    const bool nameAlone = line.texts.size() <= 1;
    text += ShortenedToWidth(name, nameAlone ? width_ - layout_.indent.size() : nameWidth_);
    std::size_t written = DisplayWidth(text);
    std::size_t columnEnd = layout_.indent.size() + nameWidth_;
    const std::size_t cells = nameAlone ? 0 : line.texts.size() - 1;
    for (std::size_t column = part.first; column < std::min(part.end, cells); ++column) {
      const std::string cell = ShortenedToWidth(line.texts[column + 1], widths_[column]);
      const std::size_t cellWidth = DisplayWidth(cell);
      columnEnd += layout_.gap + widths_[column];
      text.append(columnEnd - cellWidth - written, ' ').append(cell);
      written = columnEnd;
    }
    text.erase(text.find_last_not_of(' ') + 1);
    return text += '\n';
  }

  const std::vector<TableLine>& lines_;
  const TableLayout& layout_;
  const std::size_t width_;
  std::size_t nameWidth_ = 0;
  std::size_t room_ = 0;  // columns of the terminal for the cells of a line
  std::vector<std::size_t> widths_;
  std::vector<Part> parts_;
};

}  // namespace

std::size_t PartCount(const std::vector<TableLine>& lines, const TableLayout& layout) {
  return Splitting(lines, layout).PartCount();
}

std::string SplitTableText(const std::vector<TableLine>& lines, const TableLayout& layout) {
  return Splitting(lines, layout).Text();
}

}  // namespace krnqb::plan_file
