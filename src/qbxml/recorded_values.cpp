#include "qbxml/recorded_values.h"

#include <fmt/format.h>

#include <nlohmann/json.hpp>

namespace krnqb {
namespace {

// An error, a version and an import are objects in the object that is the line.
constexpr int deepestValue = 2;

// Returns a value as a message shows it. A line may hold gigabytes.
std::string Shown(const RecordedObject& value) {
  constexpr std::size_t longest = 40;
  if (value.is_object()) return "an object";
  if (value.is_array()) return "an array";
  if (!value.is_string()) return value.dump();
  const auto& text = value.get_ref<const std::string&>();
  if (text.size() <= longest) return '"' + text + '"';
  std::size_t end = longest;
  while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
  return '"' + text.substr(0, end) + "...";
}

}  // namespace

// Deeper values than a recording has are refused at once, since each takes far more memory than its text.
RecordedObject ParseRecordedLine(const std::string& text) {
  using Event = RecordedObject::parse_event_t;
  const auto limitDepth = [](int depth, Event event, const RecordedObject& /*parsed*/) {
    const bool begins = event == Event::object_start || event == Event::array_start;
    if (begins && depth >= deepestValue)
      throw RecordingFault(fmt::format("values are nested more than {} deep", deepestValue));
    return true;
  };
  try {
    RecordedObject line = RecordedObject::parse(text, limitDepth);
    if (line.is_object()) return line;
    const std::string is = Shown(line);
    throw NotAnObject(is, fmt::format("the line is {}; an object is expected", is));
  } catch (const RecordedObject::parse_error& error) {
    throw NotAnObject("not JSON", fmt::format("not JSON from column {} on", error.byte));
  } catch (const RecordedObject::exception&) {
    throw RecordingFault("a number is out of range");
  }
}

Error RecordingFault(const std::string& fault) {
  return {error_number::unspecified, fault};
}

const RecordedObject& RecordedValue(const RecordedObject& object, std::string_view name,
                                    std::string_view expected) {
  const auto found = object.find(name);
  if (found == object.end())
    throw RecordingFault(fmt::format("\"{}\" is missing; {} is expected", name, expected));
  return *found;
}

Error UnexpectedValue(std::string_view name, const RecordedObject& value, std::string_view expected) {
  return RecordingFault(fmt::format("\"{}\" is {}; {} is expected", name, Shown(value), expected));
}

std::string RecordedText(const RecordedObject& object, std::string_view name) {
  constexpr std::string_view expected = "a text";
  const RecordedObject& value = RecordedValue(object, name, expected);
  if (!value.is_string()) throw UnexpectedValue(name, value, expected);
  return value.get<std::string>();
}

bool RecordedTruth(const RecordedObject& object, std::string_view name) {
  constexpr std::string_view expected = "true or false";
  const RecordedObject& value = RecordedValue(object, name, expected);
  if (!value.is_boolean()) throw UnexpectedValue(name, value, expected);
  return value.get<bool>();
}

std::int64_t RecordedInteger(const RecordedObject& object, std::string_view name, std::int64_t least,
                             std::int64_t most) {
  const std::string expected = fmt::format("a whole number from {} to {}", least, most);
  const RecordedObject& value = RecordedValue(object, name, expected);
  const auto fits = [&] {
    if (value.is_number_unsigned() && value.get<std::uint64_t>() > static_cast<std::uint64_t>(most))
      return false;
    return value.is_number_integer() && value.get<std::int64_t>() >= least &&
           value.get<std::int64_t>() <= most;
  };
  if (!fits()) throw UnexpectedValue(name, value, expected);
  return value.get<std::int64_t>();
}

}  // namespace krnqb
