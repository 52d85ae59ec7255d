#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace krnqb {

/// A line to be written to a recording. Keeps its members in the documented order.
using RecordedLine = nlohmann::ordered_json;

/// Returns the line with its end. Bytes that are not UTF-8 become U+FFFD: a company's path may hold some, and
/// what is recorded must not end an import.
inline std::string RecordedLineText(const RecordedLine& line) {
  return line.dump(-1, ' ', false, RecordedLine::error_handler_t::replace) + '\n';
}

}  // namespace krnqb
