#include "plan/block_rows.h"

#include <fmt/format.h>

#include "krnqb/error.h"
#include "plan/table_identifiers.h"
#include "support/date.h"
#include "support/number_text.h"

namespace krnqb {
namespace {

// The row at index n - k of n rows, found from the end so that long blocks cost nothing; none means at the
// end.
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
  for (XmlElement& cell : tableBlocks.SelectAll("//c")) {
    if (cell.Text().starts_with('=')) cell.SetText(emptyCellText);
  }
}

void TableItemRecord(std::string& result, std::string_view tableId, const XmlElement& tableBlocks,
                     Clock& clock) {
  result += fmt::format("\r\n<tableitem id=\"{}\">\r\n<lastsavedid>QB{}</lastsavedid>\r\n", tableId,
                        RoundedDateSerial(clock.Now()));
  result += tableBlocks.Xml();
  result += "\r\n</tableitem>";
}

}  // namespace krnqb
