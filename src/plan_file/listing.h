#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "plan_file/changes.h"
#include "plan_file/content.h"
#include "plan_file/file.h"

namespace krnqb::plan_file {

/// A UTF-8 text in printable ASCII: \n, \r, \t and \\ for these four, \uXXXX (four lower-case hexadecimal
/// digits) for each UTF-16 unit of every other character outside.
std::string AsciiText(std::string_view text);

/// The plan's cells for comparing, one line each: table id, block id, row and column from 0, and the cell's
/// text, between them one tab; block id and text as `AsciiText`.
std::string CellListing(const PlanContent& content);
std::string CellListing(const PlanFile& plan);

/// Changes for comparing, one line each, in the order of the plan; fields as above, between them one tab:
///   added    table  block  row  name
///   removed  table  block  row  name
///   changed  table  block  row  name  column  before  after
///   cleared  table  block  row  name  column  before
std::string ChangeListing(const std::vector<TableChange>& changes);

}  // namespace krnqb::plan_file
