#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "krnqb/xml_element.h"

namespace krnqb::fakes {

// Builders of plan blocks whose rows have a cell per month, and a reader of their cells. All texts are XML.

/// Returns a row with a name and `cellCount` cells that have the same text.
inline std::string WideRow(std::string_view name, int cellCount, std::string_view text) {
  std::string row = "<row><c>" + std::string(name) + "</c>";
  for (int cell = 0; cell < cellCount; ++cell) row += "<c>" + std::string(text) + "</c>";
  return row + "</row>";
}
/// Returns a planned row: growth rate and twelve months, all "p".
inline std::string PlannedRow(std::string_view name) {
  return WideRow(name, 13, "p");
}
/// Returns an actual row: twelve months, all "a".
inline std::string ActualRow(std::string_view name) {
  return WideRow(name, 12, "a");
}

/// Returns a block with further attributes, such as "startrow=\"5\"".
inline std::string AmountBlock(std::string_view id, std::string_view attributes, const std::string& rows) {
  return "<block id=\"" + std::string(id) + "\"" + (attributes.empty() ? "" : " ") + std::string(attributes) +
         ">" + rows + "</block>";
}

/// Returns the texts of a row's cells; `document` contains the block at any depth and need not have a single
/// root. Rows are counted from 0. Returns no texts if the row is missing.
inline std::vector<std::string> CellsOf(const std::string& document, const std::string& blockId,
                                        std::size_t row) {
  std::vector<std::string> texts;
  const XmlElement root = XmlElement::Parse("<all>" + document + "</all>");
  if (!root) return texts;
  const XmlElement block = root.Select("//block[@id='" + blockId + "']");
  if (!block || block.Children().size() <= row) return texts;
  for (const XmlElement& cell : block.Children()[row].Children()) texts.push_back(cell.Text());
  return texts;
}

/// Returns a name, followed by `count` cells with the same text.
inline std::vector<std::string> Cells(const std::string& name, std::size_t count, const std::string& text) {
  std::vector<std::string> cells{name};
  cells.resize(count + 1, text);
  return cells;
}

}  // namespace krnqb::fakes
