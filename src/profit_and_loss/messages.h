#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "profit_and_loss/report.h"

namespace krnqb::profit_and_loss {

/// Returns a text of a document in quotation marks for a message: shortened, and with U+FFFD in place of
/// control characters and of bytes that are not UTF-8.
std::string Quoted(std::string_view text);

/// Returns where a row is, such as "books.csv: line 12".
std::string PlaceOf(const CapturedReport& report, std::size_t row);

/// Throws Error 13 "PLACE: WHAT; ADVICE".
[[noreturn]] void Refuse(std::string_view place, std::string_view what, std::string_view advice);

/// Sentences about a document. Those beyond the first hundred are only counted.
class Findings {
 public:
  void Add(std::string sentence);
  /// Returns the sentences, the last of which says how many are left out, if any.
  std::vector<std::string> Take(std::string_view document);

 private:
  std::vector<std::string> sentences_;
  std::size_t leftOut_ = 0;
};

}  // namespace krnqb::profit_and_loss
