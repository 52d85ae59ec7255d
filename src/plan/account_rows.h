#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "krnqb/xml_element.h"

namespace krnqb {

/// Whether an account record's "Sublevel" is exactly "0". A record without one is not at the top level.
bool IsTopLevelAccount(const XmlElement& account);

/// A row that an account list added to a block.
struct NewAccountRow {
  std::string name;
  XmlElement row;
};

/// The ids of the blocks that get a blank row beside each new one, in the form in which keys compare.
using TwinBlocks = std::unordered_set<std::string>;

/// Merges the top-level accounts of a list into a table's block and keeps the block's twins in step.
///
/// Each child of `accounts` whose "Sublevel" is exactly "0" and whose "Name" is in no first cell of the block
/// (case minded) gets a row of that name, in the order of the list, and is appended to `newRows`. Then every
/// twin block of the table gets one blank row per entry of `newRows`, and when there is any, the formulas of
/// the table are cleared. An empty block name merges nothing by name, and the twins alone are kept in step.
/// Nothing happens without table blocks.
///
/// Error 91 when the block is not there although an account needs it, has no row to copy, or has a row
/// without cells where names are compared; also for a top-level account without a name.
void MergeAccountRows(const XmlElement& tableBlocks, std::string_view blockName, const XmlElement& accounts,
                      std::vector<NewAccountRow>& newRows, const TwinBlocks& twins,
                      std::int16_t rowsKeptBelow);

}  // namespace krnqb
