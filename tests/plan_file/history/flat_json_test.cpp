#include "plan_file/history/flat_json.h"

#include <gtest/gtest.h>

namespace krnqb::plan_file {
namespace {

template <typename Type>
Type ValueAt(const FlatJson& json, const std::string& path) {
  const auto found = json.find(path);
  if (found != json.end() && std::holds_alternative<Type>(found->second))
    return std::get<Type>(found->second);
  ADD_FAILURE() << path;
  return {};
}

TEST(FlatJson, HoldsEveryValueByItsPath) {
  const auto json = ParseFlatJson(
      R"({"a": 1, "b": {"c": "x", "d": [true, {"e": null}, [], -2]}, "f": 1.5, "g": 18446744073709551615})");
  ASSERT_TRUE(json);
  EXPECT_EQ(json->size(), 11U);
  EXPECT_EQ(ValueAt<std::int64_t>(*json, "a"), 1);
  ValueAt<JsonObject>(*json, "b");
  EXPECT_EQ(ValueAt<std::string>(*json, "b.c"), "x");
  EXPECT_EQ(ValueAt<JsonArray>(*json, "b.d").length, 4U);
  EXPECT_EQ(ValueAt<bool>(*json, "b.d.0"), true);
  ValueAt<JsonObject>(*json, "b.d.1");
  ValueAt<std::nullptr_t>(*json, "b.d.1.e");
  EXPECT_EQ(ValueAt<JsonArray>(*json, "b.d.2").length, 0U);
  EXPECT_EQ(ValueAt<std::int64_t>(*json, "b.d.3"), -2);
  ValueAt<JsonOtherNumber>(*json, "f");
  ValueAt<JsonOtherNumber>(*json, "g");
}

TEST(FlatJson, IsNothingForAnotherText) {
  for (const char* text :
       {"", "1", "null", "\"a\"", "[]", "[{}]", "{", "{}}", "{\"a\": }", "{\"a\": \"\xFF\"}"}) {
    EXPECT_FALSE(ParseFlatJson(text)) << text;
  }
  EXPECT_TRUE(ParseFlatJson("{}"));
}

TEST(FlatJson, HasAtMostSixteenLevels) {
  const auto nested = [](std::size_t arrays) {
    return "{\"a\": " + std::string(arrays, '[') + std::string(arrays, ']') + "}";
  };
  EXPECT_TRUE(ParseFlatJson(nested(15)));
  EXPECT_FALSE(ParseFlatJson(nested(16)));
  EXPECT_FALSE(ParseFlatJson(nested(1'000'000)));
}

}  // namespace
}  // namespace krnqb::plan_file
