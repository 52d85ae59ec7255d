#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "krnqb/xml_element.h"

namespace krnqb {

/// Returns whether an account record's "Sublevel" is exactly "0". A record without one is not at the top
/// level.
bool IsTopLevelAccount(const XmlElement& account);

/// A row that was added to a block for an account.
struct NewAccountRow {
  std::string name;
  XmlElement row;
};

/// The case-folded ids of the blocks that receive a blank row for each new row of the main block.
using TwinBlocks = std::unordered_set<std::string>;

/// Merges the top-level accounts of a list into a block of a table and keeps the block's twins aligned.
///
/// For each child of `accounts` at the top level whose "Name" is in no first cell of the block
/// (case-sensitive), adds a row of that name, in the order of the list, and appends it to `newRows`. Then
/// adds one blank row per entry of `newRows` to every twin block of the table and, if there are any, clears
/// the table's formulas. With an empty block name only the twins get rows. Does nothing without table blocks.
///
/// Throws Error 91 if an account needs the block and the block is missing, has no row to copy, or has a row
/// without cells before the name is found; also for a top-level account without a name.
void MergeAccountRows(const XmlElement& tableBlocks, std::string_view blockName, const XmlElement& accounts,
                      std::vector<NewAccountRow>& newRows, const TwinBlocks& twins,
                      std::int16_t rowsKeptBelow);

}  // namespace krnqb
