#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

namespace krnqb::plan_file {

struct JsonArray {
  std::size_t length = 0;
};
struct JsonObject {};
/// A number that is not a 64-bit integer.
struct JsonOtherNumber {};

using JsonValue =
    std::variant<std::nullptr_t, bool, std::int64_t, JsonOtherNumber, std::string, JsonArray, JsonObject>;

/// The values of a JSON object by their paths, such as "settings.options.0". Of two members with one name the
/// last is kept.
using FlatJson = std::map<std::string, JsonValue>;

/// Parses a JSON object; returns nullopt for any other text, and for one of more than 16 levels. Without
/// memory it throws std::bad_alloc, where the parsed tree of the JSON library would end the process.
std::optional<FlatJson> ParseFlatJson(std::string_view text);

}  // namespace krnqb::plan_file
