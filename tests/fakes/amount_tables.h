#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "krnqb/xml_element.h"

namespace krnqb::fakes {

// Builders of plan blocks whose rows have a cell per month, and a reader of their cells. All texts are XML.

/// A row with a name and a number of further cells, all with the same text.
inline std::string WideRow(std::string_view name, int cellCount, std::string_view text) {
  std::string row = "<row><c>" + std::string(name) + "</c>";
  for (int cell = 0; cell < cellCount; ++cell) row += "<c>" + std::string(text) + "</c>";
  return row + "</row>";
}
/// A planned row: growth rate and twelve months, all "p".
inline std::string PlannedRow(std::string_view name) {
  return WideRow(name, 13, "p");
}
/// An actual row: twelve months, all "a".
inline std::string ActualRow(std::string_view name) {
  return WideRow(name, 12, "a");
}

/// A block; `attributes` such as "startrow=\"5\"".
inline std::string AmountBlock(std::string_view id, std::string_view attributes, const std::string& rows) {
  return "<block id=\"" + std::string(id) + "\"" + (attributes.empty() ? "" : " ") + std::string(attributes) +
         ">" + rows + "</block>";
}

/// The texts of a row's cells, given the document (or the run of elements) that holds the block; rows are
/// counted from 0. Empty when there is no such row.
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

/// A name, then cells that all have the same text.
inline std::vector<std::string> Cells(const std::string& name, std::size_t count, const std::string& text) {
  std::vector<std::string> cells{name};
  cells.resize(count + 1, text);
  return cells;
}

}  // namespace krnqb::fakes
