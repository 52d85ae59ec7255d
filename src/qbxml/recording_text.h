#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace krnqb {

/// A line to be written to a recording. Keeps its members in the documented order.
using RecordedLine = nlohmann::ordered_json;

/// Returns a value as JSON. Bytes that are not UTF-8 become U+FFFD: a company's path may hold some, and what
/// is recorded must not end an import.
inline std::string RecordedValueText(const RecordedLine& value) {
  return value.dump(-1, ' ', false, RecordedLine::error_handler_t::replace);
}

/// Returns the line with its end.
inline std::string RecordedLineText(const RecordedLine& line) {
  return RecordedValueText(line) + '\n';
}

}  // namespace krnqb
