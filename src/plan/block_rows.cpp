#include "plan/block_rows.h"

#include "krnqb/error.h"
#include "plan/table_identifiers.h"
#include "support/number_text.h"

namespace krnqb {
namespace {

// Returns the row at index n - k of n rows, or an empty element for the end of the block. Counts from the
// end, since blocks can be long and k is small.
XmlElement RowToInsertBefore(const XmlElement& block, std::int16_t rowsKeptBelow) {
  if (rowsKeptBelow < 1) return {};
  XmlElement row = block.LastChild();
  for (std::int16_t step = 1; step < rowsKeptBelow && row; ++step) row = row.PreviousSibling();
  const bool rowsAbove = static_cast<bool>(row.PreviousSibling());
  return rowsAbove ? row : XmlElement();
}

}  // namespace

XmlElement FindBlock(const XmlElement& tableBlocks, std::string_view blockId) {
  for (XmlElement block = tableBlocks.FirstChild(); block; block = block.NextSibling()) {
    if (block.IsNamed("block") && block.Attribute("id") == blockId) return block;
  }
  return {};
}

XmlElement AddBlockRow(XmlElement block, std::string_view name, std::int16_t rowsKeptBelow) {
  const XmlElement templateRow = block.FirstChild();
  if (!templateRow || (!name.empty() && !templateRow.FirstChild())) throw Error(error_number::objectNotSet);
  XmlElement row = block.InsertCopy(templateRow, RowToInsertBefore(block, rowsKeptBelow));
  XmlElement cell = row.FirstChild();
  if (!name.empty()) {
    cell.SetText(name);
    cell = cell.NextSibling();
  }
  for (; cell; cell = cell.NextSibling()) cell.SetText(ConvertToDouble(cell.Text()) ? "0" : emptyCellText);
  return row;
}

void ClearFormulaCells(const XmlElement& tableBlocks) {
  for (XmlElement cell = tableBlocks.Root(); cell; cell = cell.NextInDocument()) {
    if (cell.IsNamed("c") && cell.Text().starts_with('=')) cell.SetText(emptyCellText);
  }
}

}  // namespace krnqb
