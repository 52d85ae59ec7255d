#include <fmt/format.h>
#include <rapidjson/reader.h>

#include <algorithm>

#include "qbxml/recorded_values.h"
#include "support/characters.h"

namespace krnqb {
namespace {

// An error, a version and an import are objects in the object that is the line.
constexpr std::size_t deepestValue = 2;

NotAnObject NotJson(std::size_t column) {
  return {"not JSON", fmt::format("not JSON from column {} on", column)};
}

// Makes the value that is the line of what the parser reports. Texts are views of what is parsed. Deeper
// values than a recording has are refused at once, since each takes far more memory than its text.
class LineBuilder {
  using Kind = RecordedValue::Kind;

 public:
  RecordedValue Line() && { return std::move(line_); }

  bool Null() { return Add({}); }
  bool Bool(bool truth) { return Add(Kind::Truth, &RecordedValue::truth, truth); }
  bool Int(int number) { return Int64(number); }
  bool Uint(unsigned number) { return Int64(number); }
  bool Int64(std::int64_t number) { return Add(Kind::Integer, &RecordedValue::integer, number); }
  bool Uint64(std::uint64_t number) {
    if (number <= std::numeric_limits<std::int64_t>::max()) return Int64(static_cast<std::int64_t>(number));
    return Add(Kind::LargeInteger, &RecordedValue::largeInteger, number);
  }
  bool Double(double number) { return Add(Kind::Fraction, &RecordedValue::fraction, number); }
  static bool RawNumber(const char* /*text*/, rapidjson::SizeType /*length*/, bool /*copy*/) {
    return false;  // numbers are not asked for as texts
  }
  bool String(const char* text, rapidjson::SizeType length, bool /*copy*/) {
    const std::string_view added(text, length);
    return IsUtf8(added) && Add(Kind::Text, &RecordedValue::text, added);
  }
  bool StartObject() { return Begin(Kind::Object); }
  bool Key(const char* text, rapidjson::SizeType length, bool /*copy*/) {
    open_.back().name = std::string_view(text, length);
    return IsUtf8(open_.back().name);
  }
  bool EndObject(rapidjson::SizeType /*members*/) { return End(); }
  bool StartArray() { return Begin(Kind::Array); }
  bool EndArray(rapidjson::SizeType /*elements*/) { return End(); }

 private:
  // An object or array whose end has not been read, and the name of its next member.
  struct OpenValue {
    RecordedValue value;
    std::string_view name = {};
  };

  // Escapes can make half a character, which the parser lets pass.
  static bool IsUtf8(std::string_view text) { return !InvalidUtf8(text); }

  bool Begin(Kind kind) {
    if (open_.size() >= deepestValue)
      throw RecordingFault(fmt::format("values are nested more than {} deep", deepestValue));
    open_.emplace_back().value.kind = kind;
    return true;
  }

  bool End() {
    RecordedValue ended = std::move(open_.back().value);
    open_.pop_back();
    return Add(std::move(ended));
  }

  template <typename Content>
  bool Add(Kind kind, Content RecordedValue::*member, Content content) {
    RecordedValue value;
    value.kind = kind;
    value.*member = content;
    return Add(std::move(value));
  }

  bool Add(RecordedValue value) {
    if (open_.empty()) {
      line_ = std::move(value);
    } else if (open_.back().value.kind == Kind::Object) {
      open_.back().value.members.push_back({open_.back().name, std::move(value)});
    }
    return true;
  }

  RecordedValue line_;
  std::vector<OpenValue> open_;
};

// Returns the index of the first byte that no JSON has, or the length. The parser overlooks these control
// characters where it searches in blocks.
std::size_t ImpossibleByte(std::string_view text) noexcept {
  std::size_t first = InvalidUtf8(text).value_or(text.size());
  for (char overlooked = '\x1A'; overlooked < ' '; ++overlooked)
    first = std::min(first, text.substr(0, first).find(overlooked));
  return first;
}

// The parser reads whole blocks of memory, so that what follows the text has to be readable.
RecordedValue ParseValue(std::string& line) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  const std::size_t length = line.size();
  const std::size_t begin = line.starts_with(byteOrderMark) ? byteOrderMark.size() : 0;
  const std::size_t impossible = begin + ImpossibleByte(std::string_view(line).substr(begin));
  line.append(recordedLinePadding, '\0');
  rapidjson::InsituStringStream text(line.data() + begin);
  rapidjson::Reader reader;
  LineBuilder builder;
  const rapidjson::ParseResult parsed = reader.Parse<rapidjson::kParseInsituFlag>(text, builder);
  // A zero byte ends the text for the parser.
  const std::size_t end = begin + (parsed.IsError() ? parsed.Offset() : text.Tell());
  const std::size_t fault = std::min(impossible, end);
  if (parsed.Code() == rapidjson::kParseErrorNumberTooBig && end < impossible)
    throw RecordingFault("a number is out of range");
  if (parsed.IsError() || fault < length) throw NotJson(fault + 1);
  return std::move(builder).Line();
}

}  // namespace

RecordedObject ParseRecordedLine(std::string& line) {
  RecordedValue value = ParseValue(line);
  if (value.kind == RecordedValue::Kind::Object) return value;
  const std::string is = Shown(value);
  throw NotAnObject(is, fmt::format("the line is {}; an object is expected", is));
}

}  // namespace krnqb
