#include "plan_file/history/flat_json.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>
#include <utility>
#include <vector>

namespace krnqb::plan_file {
namespace {

using Json = nlohmann::json;

constexpr std::size_t mostLevels = 16;

// Collects the values of a text as the library reads it. A function that returns false ends the reading.
class Collector final : public nlohmann::json_sax<Json> {
 public:
  FlatJson& Values() noexcept { return values_; }

  bool null() override { return Add(nullptr); }
  bool boolean(bool value) override { return Add(value); }
  bool number_integer(number_integer_t value) override { return Add(static_cast<std::int64_t>(value)); }
  bool number_unsigned(number_unsigned_t value) override {
    if (value > INT64_MAX) return Add(JsonOtherNumber());
    return Add(static_cast<std::int64_t>(value));
  }
  bool number_float(number_float_t /*value*/, const string_t& /*text*/) override {
    return Add(JsonOtherNumber());
  }
  bool string(string_t& value) override { return Add(std::move(value)); }
  bool binary(binary_t& /*value*/) override { return false; }

  bool start_object(std::size_t /*members*/) override {
    if (!levels_.empty() && !Add(JsonObject())) return false;
    return Open(false);
  }
  bool key(string_t& name) override {
    levels_.back().name = std::move(name);
    return true;
  }
  bool end_object() override {
    levels_.pop_back();
    if (!levels_.empty()) ++levels_.back().length;
    return true;
  }

  bool start_array(std::size_t /*elements*/) override { return Add(JsonArray()) && Open(true); }
  bool end_array() override {
    const std::size_t length = levels_.back().length;
    levels_.pop_back();
    values_.insert_or_assign(Path(), JsonArray{length});
    ++levels_.back().length;
    return true;
  }

  bool parse_error(std::size_t /*position*/, const std::string& /*token*/,
                   const nlohmann::detail::exception& /*fault*/) override {
    return false;
  }

 private:
  struct Level {
    bool isArray = false;
    std::size_t length = 0;  // of an array, so far
    std::string name;        // of the member being read
  };

  std::string Path() const {
    std::string path;
    for (const Level& level : levels_) {
      if (!path.empty()) path += '.';
      path += level.isArray ? fmt::format("{}", level.length) : level.name;
    }
    return path;
  }

  // False for a value that is not in the object.
  bool Add(JsonValue value) {
    if (levels_.empty()) return false;
    const bool complete =
        !std::holds_alternative<JsonArray>(value) && !std::holds_alternative<JsonObject>(value);
    values_.insert_or_assign(Path(), std::move(value));
    if (complete) ++levels_.back().length;
    return true;
  }

  bool Open(bool isArray) {
    if (levels_.size() == mostLevels) return false;
    levels_.push_back({.isArray = isArray, .length = 0, .name = {}});
    return true;
  }

  std::vector<Level> levels_;
  FlatJson values_;
};

}  // namespace

std::optional<FlatJson> ParseFlatJson(std::string_view text) {
  Collector collector;
  if (!Json::sax_parse(text, &collector)) return std::nullopt;
  return std::move(collector.Values());
}

}  // namespace krnqb::plan_file
