#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace krnqb::cli {

/// A JSON value whose members keep the order in which they are added.
using Json = nlohmann::ordered_json;

/// Returns the value as indented text without a line end. Bytes that are not UTF-8 (paths and file contents
/// may hold some) become U+FFFD. Every control character (see `IsControl`) is escaped.
std::string JsonText(const Json& json);

/// Returns the value in the same way on one line.
std::string JsonLine(const Json& json);

}  // namespace krnqb::cli
