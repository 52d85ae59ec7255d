#pragma once

#include <algorithm>
#include <fstream>
#include <string>
#include <vector>

namespace krnqb::tests {

/// Returns the rows of the first table below a line of a Markdown document, such as a heading, without the
/// table's own headings. Cells are trimmed and without backticks. Empty if there is no such document or line.
inline std::vector<std::vector<std::string>> RowsBelow(const std::string& document,
                                                       const std::string& above) {
  std::ifstream lines(document);
  std::string line;
  const auto next = [&] {
    if (!std::getline(lines, line)) return false;
    if (line.ends_with('\r')) line.pop_back();
    return true;
  };
  while (next() && line != above) {
  }
  while (next() && !line.starts_with('|')) {
  }
  std::vector<std::vector<std::string>> rows;
  for (; line.starts_with('|'); line.clear(), next()) {
    std::vector<std::string> cells(1);
    for (const char character : line.substr(1)) {
      if (character == '|') {
        cells.emplace_back();
      } else if (character != '`') {
        cells.back() += character;
      }
    }
    cells.pop_back();
    for (std::string& cell : cells) {
      cell.erase(0, cell.find_first_not_of(' '));
      cell.erase(cell.find_last_not_of(' ') + 1);
    }
    rows.push_back(cells);
  }
  rows.erase(rows.begin(), rows.begin() + std::min<std::ptrdiff_t>(2, std::ssize(rows)));
  return rows;
}

}  // namespace krnqb::tests
