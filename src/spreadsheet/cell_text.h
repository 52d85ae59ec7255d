#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace krnqb::spreadsheet {

/// Returns the longest beginning of a UTF-8 text that has at most `units` UTF-16 units, in which spreadsheets
/// count.
std::string_view Beginning(std::string_view text, std::size_t units) noexcept;

/// Returns the text with a blank in place of every control character.
std::string WithoutControlCharacters(std::string_view text);

/// Returns whether a cell of a sheet has room for the text.
bool FitsCell(std::string_view text) noexcept;

/// Returns the text as a cell shows it: without control characters, and if it is too long for a cell, its
/// beginning and "…".
std::string CellText(std::string_view text);

/// Returns "B7" for the cell in row 6 and column 1, both counted from 0.
std::string CellName(std::size_t row, std::size_t column);

/// Returns "B" for column 1.
std::string ColumnName(std::size_t column);

}  // namespace krnqb::spreadsheet
