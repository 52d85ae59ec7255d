#include "cli/explain/line_table.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include "cli/console/text_table.h"
#include "cli/explain/words.h"
#include "support/display_width.h"
#include "support/money_text.h"

namespace krnqb::cli {
namespace {

enum Column : std::size_t { Date, Kind, Number, Name, Account, AsRead, Added };
constexpr std::size_t columnCount = Added + 1;
using Cells = std::array<std::string, columnCount>;

constexpr std::size_t gap = 2;
constexpr std::size_t shortestName = 4;

// Of a sub-account, the name below the account of the sum; empty for that account itself.
std::string AccountText(const ledger::LedgerBooking& booking, const ledger::LedgerSlot& slot) {
  const std::string& name = booking.accountName.empty() ? booking.account : booking.accountName;
  if (slot.group == AmountGroup::PastPerformance || !name.starts_with(slot.name)) return name;
  if (name.size() == slot.name.size()) return {};
  return name[slot.name.size()] == ':' ? name.substr(slot.name.size() + 1) : name;
}

Cells CellsOf(const StoryLine& line, const ledger::LedgerSlot& slot) {
  Cells cells;
  const ledger::LedgerBooking& booking = line.booking;
  if (line.document) {
    cells[Date] = line.document->date;
    cells[Number] = line.document->number;
    cells[Name] = line.document->party;
  } else {
    cells[Date] = booking.fromDate;
  }
  cells[Kind] = SourceText(booking, line.document);
  cells[Account] = AccountText(booking, slot);
  cells[AsRead] = AmountAsRead(booking);
  cells[Added] = ExactMoneyText(booking.amount);
  for (std::string& cell : cells) cell = OneLine(cell);
  return cells;
}

std::size_t WidthOf(const std::vector<Cells>& rows, Column column) {
  std::size_t width = 0;
  for (const Cells& row : rows) width = std::max(width, DisplayWidth(row[column]));
  return width;
}

// Shortens the longest of the names until the table fits.
void Fit(std::vector<Cells>& rows, std::size_t width) {
  std::array<std::size_t, columnCount> widths{};
  std::size_t total = 0;
  for (std::size_t column = 0; column < columnCount; ++column) {
    widths[column] = WidthOf(rows, static_cast<Column>(column));
    if (widths[column] > 0) total += widths[column] + (total > 0 ? gap : 0);
  }
  constexpr std::array shortened{Account, Name, Kind, Number};
  while (total > width) {
    const Column widest =
        *std::ranges::max_element(shortened, {}, [&](Column column) { return widths[column]; });
    if (widths[widest] <= shortestName) break;
    --widths[widest];
    --total;
  }
  for (Cells& row : rows) {
    for (const Column column : shortened) row[column] = ShortenedToWidth(row[column], widths[column]);
  }
}

std::vector<std::string> TableLines(const std::vector<Cells>& rows, const std::string& indent) {
  std::vector<Alignment> alignments;
  std::vector<Column> columns;
  for (std::size_t index = 0; index < columnCount; ++index) {
    const auto column = static_cast<Column>(index);
    if (WidthOf(rows, column) == 0) continue;
    columns.push_back(column);
    alignments.push_back(column == AsRead || column == Added ? Alignment::Right : Alignment::Left);
  }
  TextTable table(std::move(alignments));
  for (const Cells& row : rows) {
    std::vector<std::string> cells;
    cells.reserve(columns.size());
    for (const Column column : columns) cells.push_back(row[column]);
    table.AddRow(std::move(cells));
  }
  const std::string text = table.Text(indent);
  std::vector<std::string> lines;
  for (std::size_t begin = 0; begin < text.size();) {
    const std::size_t end = text.find('\n', begin) + 1;
    lines.push_back(text.substr(begin, end - begin));
    begin = end;
  }
  return lines;
}

std::string Heading(const StoryLine& line) {
  return fmt::format("{}{}{}:", RuleText(line.booking.rule),
                     line.booking.billedAgain ? ", more than was booked" : "",
                     line.replaced ? " (not added: replaced afterwards)" : "");
}

}  // namespace

std::string LineTable(const SumStory& story, std::size_t width, const std::string& indent) {
  if (story.lines.empty()) return {};
  const std::string inner = indent + "  ";
  std::vector<Cells> rows;
  rows.reserve(story.lines.size() + 1);
  for (const StoryLine& line : story.lines) rows.push_back(CellsOf(line, story.slot));
  if (story.lines.size() > 1) {
    Cells& sum = rows.emplace_back();
    sum[Date] = "Sum";
    sum[Added] = MoneyText(story.sum);
  }
  Fit(rows, width > inner.size() ? width - inner.size() : 0);
  const std::vector<std::string> lines = TableLines(rows, inner);
  std::string text;
  std::string lastHeading;
  for (std::size_t index = 0; index < lines.size(); ++index) {
    if (index < story.lines.size()) {
      std::string heading = Heading(story.lines[index]);
      if (heading != lastHeading) text += fmt::format("{}{}\n", indent, heading);
      lastHeading = std::move(heading);
    }
    text += lines[index];
  }
  return text;
}

}  // namespace krnqb::cli
