#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "plan_file/changes.h"
#include "plan_file/content.h"
#include "plan_file/file.h"

namespace krnqb::plan_file {

/// Returns a UTF-8 text in printable ASCII: \n, \r, \t and \\ for these four, \uXXXX (four lower-case
/// hexadecimal digits) for each UTF-16 unit of any other non-printable or non-ASCII character.
std::string AsciiText(std::string_view text);

/// Returns the plan's cells for comparison, one line each: table id, block id, row and column from 0, and the
/// cell's text, separated by tabs; block id and text as `AsciiText`.
std::string CellListing(const PlanContent& content);
std::string CellListing(const PlanFile& plan);

/// Returns changes for comparison, one line each, in plan order; fields as above, separated by tabs:
///   added    table  block  row  name
///   removed  table  block  row  name
///   changed  table  block  row  name  column  before  after
///   cleared  table  block  row  name  column  before
std::string ChangeListing(const std::vector<TableChange>& changes);

}  // namespace krnqb::plan_file
