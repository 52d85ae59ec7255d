#include "html/table.h"

#include <algorithm>

namespace krnqb::html {
namespace {

Attribute Unless(bool leftOut, std::string_view name, const std::string& value) {
  return leftOut ? Attribute{} : Attribute{name, value};
}

Attribute ClassOf(Alignment alignment) {
  return Unless(alignment == Alignment::Text, "class", "n");
}

Attribute ClassOf(RowKind kind) {
  return Unless(kind == RowKind::Plain, "class", kind == RowKind::Total ? "total" : "group");
}

Fragment HeadOf(const Table& table) {
  Fragment cells;
  for (const Column& column : table.columns) {
    cells += Element("th", {{"scope", "col"}, ClassOf(column.alignment)}, Text(column.heading));
  }
  return Element("thead", Element("tr", cells));
}

Fragment HeadingRow(const Row& row, std::size_t columns) {
  return Element(
      "tr", {ClassOf(row.kind)},
      Element("th", {{"scope", "rowgroup"}, {"colspan", std::to_string(columns)}}, row.heading.content));
}

Fragment RowOf(const Row& row, const std::vector<Column>& columns) {
  Fragment cells =
      Element("th", {{"scope", "row"}, Unless(row.heading.value.empty(), "data-value", row.heading.value)},
              row.heading.content);
  for (std::size_t index = 0; index + 1 < columns.size(); ++index) {
    const Cell cell = index < row.cells.size() ? row.cells[index] : Cell{};
    cells += Element(
        "td", {ClassOf(columns[index + 1].alignment), Unless(cell.value.empty(), "data-value", cell.value)},
        cell.content);
  }
  return Element("tr", {ClassOf(row.kind), Unless(row.name.empty(), "data-row", row.name)}, cells);
}

// A heading of several rows applies to the body that it is in.
Fragment BodiesOf(const Table& table) {
  Fragment bodies;
  Fragment body;
  for (const Row& row : table.rows) {
    if (row.kind == RowKind::Heading && !body.Empty()) {
      bodies += Element("tbody", body);
      body = {};
    }
    body += row.kind == RowKind::Heading ? HeadingRow(row, table.columns.size()) : RowOf(row, table.columns);
  }
  return bodies + Element("tbody", body);
}

}  // namespace

Fragment TableRegion(const Table& table) {
  if (table.rows.empty()) return {};
  const Fragment content = Element("caption", Text(table.caption)) + HeadOf(table) + BodiesOf(table);
  constexpr std::size_t mostOnPaper = 10;  // in letters of the usual size
  const bool wide = table.columns.size() > mostOnPaper;
  return Element(
      "div", {{"class", "scroll"}, {"role", "region"}, {"aria-label", table.caption}, {"tabindex", "0"}},
      Element("table", {Unless(!wide, "class", "wide"), Unless(table.name.empty(), "data-table", table.name)},
              content));
}

}  // namespace krnqb::html
