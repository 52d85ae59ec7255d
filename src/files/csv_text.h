#pragma once

#include <string>
#include <string_view>

namespace krnqb::files {

/// A line of a CSV file as RFC 4180 describes it, written field by field.
class CsvLine {
 public:
  /// Adds a name or another text that people may have typed. A spreadsheet takes a text that begins with "=",
  /// "+", "-" or "@", or has only blanks, tabs or line ends before it, for a formula: an apostrophe before
  /// it makes it a text there too.
  CsvLine& Text(std::string_view text);

  /// Adds a number, a date or another field that this program has formed: without an apostrophe.
  CsvLine& Figure(std::string_view figure);

  /// Adds an empty field.
  CsvLine& Empty() { return Figure({}); }

  /// Returns the line with CR LF. A line without fields is empty.
  std::string Line() const { return fields_ + "\r\n"; }

 private:
  void AppendField(std::string_view before, std::string_view field);

  std::string fields_;
  bool any_ = false;
};

}  // namespace krnqb::files
