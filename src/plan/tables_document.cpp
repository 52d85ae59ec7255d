#include "plan/tables_document.h"

#include <fmt/format.h>

#include <algorithm>

#include "support/date.h"

namespace krnqb {

void TablesDocument::Add(std::string_view tableId, const XmlElement& tableBlocks, Clock& clock) {
  tables_.push_back({std::string(tableId), RoundedDateSerial(clock.Now()), tableBlocks});
}

bool TablesDocument::Contains(std::string_view tableId) const noexcept {
  return std::any_of(tables_.begin(), tables_.end(), [&](const Table& table) { return table.id == tableId; });
}

XmlElement TablesDocument::FirstBlock(std::string_view blockId) const {
  return Find(blockId).block;
}

std::string TablesDocument::TableOf(std::string_view blockId) const {
  return Find(blockId).tableId;
}

TablesDocument::FoundBlock TablesDocument::Find(std::string_view blockId) const {
  if (blockId.empty()) return {};
  for (const Table& table : tables_) {
    for (XmlElement& block : table.tableBlocks.SelectAll("descendant::block")) {
      if (block.Attribute("id") == blockId) return {std::move(block), table.id};
    }
  }
  return {};
}

std::string TablesDocument::Text() const {
  std::string text = fmt::format("<tables>{}", lineEnd_);
  for (const Table& table : tables_) {
    text += fmt::format("{0}<tableitem id=\"{1}\">{0}<lastsavedid>QB{2}</lastsavedid>{0}", lineEnd_, table.id,
                        table.savedDay);
    text += table.tableBlocks.Xml();
    text += fmt::format("{}</tableitem>", lineEnd_);
  }
  return text += fmt::format("{}</tables>", lineEnd_);
}

}  // namespace krnqb
