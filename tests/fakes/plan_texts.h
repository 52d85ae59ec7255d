#pragma once

#include <initializer_list>
#include <string>
#include <string_view>

namespace krnqb::fakes {

// Builders of plan tables and of the documents that the component returns. All arguments are XML and inserted
// without escaping: "&" in a cell is written "&amp;".

using Texts = std::initializer_list<std::string_view>;

inline std::string Cell(std::string_view text) {
  return text.empty() ? "<c/>" : "<c>" + std::string(text) + "</c>";
}

inline std::string Row(Texts cells) {
  std::string row = "<row>";
  for (const std::string_view text : cells) row += Cell(text);
  return row + "</row>";
}

inline std::string Joined(std::initializer_list<std::string> parts) {
  std::string text;
  for (const std::string& part : parts) text += part;
  return text;
}

inline std::string Block(std::string_view id, std::initializer_list<std::string> rows) {
  return "<block id=\"" + std::string(id) + "\">" + Joined(rows) + "</block>";
}

inline std::string TableBlocks(std::initializer_list<std::string> blocks) {
  return "<tableblocks>" + Joined(blocks) + "</tableblocks>";
}

/// Returns a table's text as the plan serializes it.
inline std::string TableText(const std::string& id, const std::string& tableBlocks) {
  return "<tableitem id=\"" + id + "\"><lastsavedid>KRN1</lastsavedid>" + tableBlocks + "</tableitem>";
}

/// Returns one table of a result document; `stamp` is the number after "QB".
inline std::string TableRecord(const std::string& id, const std::string& tableBlocks,
                               const std::string& stamp = "37257") {
  return "\r\n<tableitem id=\"" + id + "\">\r\n<lastsavedid>QB" + stamp + "</lastsavedid>\r\n" + tableBlocks +
         "\r\n</tableitem>";
}

inline std::string TablesDocument(std::initializer_list<std::string> records) {
  return "<tables>\r\n" + Joined(records) + "\r\n</tables>";
}

}  // namespace krnqb::fakes
