#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "plan_file/attributes.h"
#include "plan_file/content.h"
#include "plan_file/file.h"

namespace krnqb::plan_file {

/// What a view shows in the cells of amounts: their texts, or what they amount to.
enum class CellView : std::uint8_t {
  Texts,
  Values  ///< numbers with two decimals; growth formulas computed, other formulas and texts as they are
};

struct TableViewOptions {
  std::size_t width = 80;  ///< longest line, in columns of a terminal; at least 20 are used
  CellView cells = CellView::Texts;
};

/// Returns a table as readable text: a title, and for each block its name, headings and rows, laid out by
/// `SplitTableText`. An empty cell is shown as "·". `start` is the plan's start, for the headings. The text
/// is UTF-8; every line ends with LF.
std::string TableView(const PlanTableContent& table, std::optional<YearMonth> start,
                      const TableViewOptions& options = {});

/// Returns all tables of a plan, separated by empty lines, or the table of an id, with nameless rows named by
/// `NameRowsAfterPlanned`. Throws Error 9 if the plan has no such table.
std::string TableView(const PlanFile& plan, const TableViewOptions& options = {});
std::string TableView(const PlanFile& plan, std::string_view tableId, const TableViewOptions& options = {});

}  // namespace krnqb::plan_file
