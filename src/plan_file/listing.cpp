#include "plan_file/listing.h"

#include <fmt/format.h>

#include <iterator>

#include "support/characters.h"

namespace krnqb::plan_file {
namespace {

void AppendUnit(std::string& ascii, std::uint32_t unit) {
  fmt::format_to(std::back_inserter(ascii), "\\u{:04x}", unit);
}

void AppendCharacter(std::string& ascii, char32_t character) {
  switch (character) {
    case U'\n':
      ascii += "\\n";
      return;
    case U'\r':
      ascii += "\\r";
      return;
    case U'\t':
      ascii += "\\t";
      return;
    case U'\\':
      ascii += "\\\\";
      return;
    default:
      break;
  }
  if (character >= 0x20 && character < 0x7F) {
    ascii += static_cast<char>(character);
  } else if (character < 0x10000) {
    AppendUnit(ascii, character);
  } else {
    AppendUnit(ascii, 0xD800 + ((character - 0x10000) >> 10));
    AppendUnit(ascii, 0xDC00 + ((character - 0x10000) & 0x3FF));
  }
}

void AppendRows(std::string& listing, std::string_view kind, const std::string& table,
                const std::vector<RowChange>& rows) {
  for (const RowChange& row : rows) {
    fmt::format_to(std::back_inserter(listing), "{}\t{}\t{}\t{}\t{}\n", kind, AsciiText(table),
                   AsciiText(row.block), row.row, AsciiText(row.name));
  }
}

void AppendCell(std::string& listing, std::string_view kind, const std::string& table,
                const CellChange& cell) {
  fmt::format_to(std::back_inserter(listing), "{}\t{}\t{}\t{}\t{}\t{}\t{}", kind, AsciiText(table),
                 AsciiText(cell.block), cell.row, AsciiText(cell.name), cell.column, AsciiText(cell.before));
}

}  // namespace

std::string AsciiText(std::string_view text) {
  std::string ascii;
  while (!text.empty()) AppendCharacter(ascii, TakeCharacter(text));
  return ascii;
}

std::string CellListing(const PlanContent& content) {
  std::string listing;
  for (const PlanTableContent& table : content) {
    for (const PlanBlock& block : table.blocks) {
      const std::string place = AsciiText(table.id) + '\t' + AsciiText(block.id);
      for (std::size_t row = 0; row < block.rows.size(); ++row) {
        for (std::size_t column = 0; column < block.rows[row].size(); ++column) {
          fmt::format_to(std::back_inserter(listing), "{}\t{}\t{}\t{}\n", place, row, column,
                         AsciiText(block.rows[row][column]));
        }
      }
    }
  }
  return listing;
}

std::string CellListing(const PlanFile& plan) {
  return CellListing(ReadPlanContent(plan));
}

std::string ChangeListing(const std::vector<TableChange>& changes) {
  std::string listing;
  for (const TableChange& table : changes) {
    AppendRows(listing, "added", table.id, table.added);
    AppendRows(listing, "removed", table.id, table.removed);
    for (const CellChange& cell : table.changed) {
      AppendCell(listing, "changed", table.id, cell);
      listing += '\t' + AsciiText(cell.after) + '\n';
    }
    for (const CellChange& cell : table.cleared) {
      AppendCell(listing, "cleared", table.id, cell);
      listing += '\n';
    }
  }
  return listing;
}

}  // namespace krnqb::plan_file
