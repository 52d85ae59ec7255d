#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "krnqb/outside_world.h"
#include "krnqb/xml_element.h"

namespace krnqb {

// A block's child elements are its rows, a row's child elements its cells; cell 0 holds the row's name.

/// The child "block" of the table blocks with exactly that id, or none.
XmlElement FindBlock(const XmlElement& tableBlocks, std::string_view blockId);

/// Inserts a copy of the block's first row above its last `rowsKeptBelow` rows, so that closing rows such as
/// totals stay at the bottom, or at the end when the block has no more rows than that or none are kept below.
/// The copy's numeric cells read "0" and all others "*null*", but for cell 0, which holds `name` unless that
/// is empty. Gives the new row. Error 91 when the block is none, has no row to copy, or a name finds no cell.
XmlElement AddBlockRow(XmlElement block, std::string_view name, std::int16_t rowsKeptBelow);

/// Empties every formula cell of the table that the blocks stand in: the planning program computes them anew.
void ClearFormulaCells(const XmlElement& tableBlocks);

/// Appends one changed table to a result: its id, a stamp made of the day (rounded from the time of day), and
/// its blocks.
void TableItemRecord(std::string& result, std::string_view tableId, const XmlElement& tableBlocks,
                     Clock& clock);

}  // namespace krnqb
