#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "krnqb/outside_world.h"
#include "krnqb/xml_element.h"

namespace krnqb {

/// The changed tables of a plan, parsed, in the order in which they were added. An import works on the parsed
/// tables and prints them where the plan or the host reads them.
class TablesDocument {
 public:
  /// Appends a changed table, stamped with the clock's day, rounded from the time of day. `tableBlocks` is
  /// shared, not copied: later changes to its rows and cells appear in this document.
  void Add(std::string_view tableId, const XmlElement& tableBlocks, Clock& clock);

  /// Returns whether a table with this id has been added.
  bool Contains(std::string_view tableId) const noexcept;

  /// Returns whether no table has been added.
  bool Empty() const noexcept { return tables_.empty(); }

  /// Returns the first block with exactly that id, at any depth of any table, or an empty element. An empty
  /// id matches no block.
  XmlElement FirstBlock(std::string_view blockId) const;

  /// Ends the lines between tables in LF from now on; in a new document they end in CR LF.
  void UseLineFeeds() noexcept { lineEnd_ = "\n"; }

  /// Returns the id of the table that contains `FirstBlock`; empty if there is no such block.
  std::string TableOf(std::string_view blockId) const;

  /// Returns the "<tables>" document with one "<tableitem>" per table: its id, its stamp and its current
  /// blocks.
  std::string Text() const;

 private:
  struct Table {
    std::string id;
    std::int32_t savedDay;
    XmlElement tableBlocks;
  };

  struct FoundBlock {
    XmlElement block;
    std::string tableId;
  };

  FoundBlock Find(std::string_view blockId) const;

  std::vector<Table> tables_;
  std::string_view lineEnd_ = "\r\n";
};

}  // namespace krnqb
