#pragma once

#include <set>
#include <string>
#include <string_view>

namespace krnqb::spreadsheet {

/// Makes the names of a workbook's sheets: each is different from the others, case-insensitively, has at most
/// 31 characters (counted as UTF-16 units), none of them one of []:*?/\ or a control character, and neither
/// begins nor ends with an apostrophe or a blank.
class SheetNames {
 public:
  /// Returns the name for a sheet that is to be called `wanted`: changed as far as a spreadsheet requires,
  /// with " (2)" and so on after a name that is taken.
  std::string Add(std::string_view wanted);

 private:
  std::set<std::string> folded_{"history"};  // reserved by spreadsheets
};

}  // namespace krnqb::spreadsheet
