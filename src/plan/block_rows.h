#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "krnqb/xml_element.h"

namespace krnqb {

// A block's child elements are its rows, a row's child elements its cells; cell 0 holds the row's name.

/// Returns the first child "block" of the table blocks with exactly that id, or an empty element.
XmlElement FindBlock(const XmlElement& tableBlocks, std::string_view blockId);

/// Inserts a copy of the block's first row above its last `rowsKeptBelow` rows, so that closing rows such as
/// totals stay at the bottom; at the end if that is below 1 or the block has no more rows than that. Numeric
/// cells of the copy are set to "0", all others to "*null*", and cell 0 to `name` unless that is empty.
/// Returns the new row. Throws Error 91 if the block is an empty element, if it has no row to copy, or if the
/// row has no cell for the name.
XmlElement AddBlockRow(XmlElement block, std::string_view name, std::int16_t rowsKeptBelow);

/// Sets every formula cell of the whole table, inside and outside blocks, to "*null*": the planning program
/// recalculates them.
void ClearFormulaCells(const XmlElement& tableBlocks);

}  // namespace krnqb
