#include "qbxml/recorded_values.h"

#include <fmt/format.h>

#include <algorithm>
#include <nlohmann/json.hpp>

namespace krnqb {
namespace {

// A line may hold gigabytes.
std::string Quoted(std::string_view text) {
  constexpr std::size_t longest = 40;
  if (text.size() <= longest) return fmt::format("\"{}\"", text);
  std::size_t end = longest;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
  return fmt::format("\"{}...", text.substr(0, end));
}

}  // namespace

const RecordedValue* RecordedValue::Find(std::string_view name) const noexcept {
  const auto found = std::find_if(members.rbegin(), members.rend(),
                                  [&](const RecordedMember& member) { return member.name == name; });
  return found == members.rend() ? nullptr : &found->value;
}

std::string Shown(const RecordedValue& value) {
  switch (value.kind) {
    case RecordedValue::Kind::Null:
      break;
    case RecordedValue::Kind::Truth:
      return value.truth ? "true" : "false";
    case RecordedValue::Kind::Integer:
      return fmt::format("{}", value.integer);
    case RecordedValue::Kind::LargeInteger:
      return fmt::format("{}", value.largeInteger);
    case RecordedValue::Kind::Fraction:
      return nlohmann::json(value.fraction).dump();
    case RecordedValue::Kind::Text:
      return Quoted(value.text);
    case RecordedValue::Kind::Array:
      return "an array";
    case RecordedValue::Kind::Object:
      return "an object";
  }
  return "null";
}

Error RecordingFault(const std::string& fault) {
  return {error_number::unspecified, fault};
}

const RecordedValue& RequiredMember(const RecordedObject& object, std::string_view name,
                                    std::string_view expected) {
  const RecordedValue* found = object.Find(name);
  if (found == nullptr)
    throw RecordingFault(fmt::format("\"{}\" is missing; {} is expected", name, expected));
  return *found;
}

Error UnexpectedValue(std::string_view name, const RecordedValue& value, std::string_view expected) {
  return RecordingFault(fmt::format("\"{}\" is {}; {} is expected", name, Shown(value), expected));
}

std::string_view RecordedText(const RecordedObject& object, std::string_view name) {
  constexpr std::string_view expected = "a text";
  const RecordedValue& value = RequiredMember(object, name, expected);
  if (value.kind == RecordedValue::Kind::Text) return value.text;
  throw UnexpectedValue(name, value, expected);
}

bool RecordedTruth(const RecordedObject& object, std::string_view name) {
  constexpr std::string_view expected = "true or false";
  const RecordedValue& value = RequiredMember(object, name, expected);
  if (value.kind == RecordedValue::Kind::Truth) return value.truth;
  throw UnexpectedValue(name, value, expected);
}

std::int64_t RecordedInteger(const RecordedObject& object, std::string_view name, std::int64_t least,
                             std::int64_t most) {
  const std::string expected = fmt::format("a whole number from {} to {}", least, most);
  const RecordedValue& value = RequiredMember(object, name, expected);
  const bool fits =
      value.kind == RecordedValue::Kind::Integer && value.integer >= least && value.integer <= most;
  if (!fits) throw UnexpectedValue(name, value, expected);
  return value.integer;
}

const RecordedObject* OptionalObject(const RecordedObject& object, std::string_view name) {
  const RecordedValue* found = object.Find(name);
  if (found != nullptr && found->kind != RecordedValue::Kind::Object)
    throw UnexpectedValue(name, *found, "an object");
  return found;
}

}  // namespace krnqb
