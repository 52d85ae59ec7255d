#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "krnqb/error.h"

namespace krnqb {

struct RecordedMember;

/// A value in a line of a recording: an object has members, and each other kind the member named after it.
/// Nothing reads the elements of an array.
struct RecordedValue {
  enum class Kind : std::uint8_t { Null, Truth, Integer, LargeInteger, Fraction, Text, Array, Object };

  Kind kind = Kind::Null;
  bool truth = false;
  std::int64_t integer = 0;
  std::uint64_t largeInteger = 0;  ///< above the range of `integer`
  double fraction = 0;             ///< also an exponent makes one
  std::string_view text = {};      ///< a view of the line
  std::vector<RecordedMember> members;

  /// Returns the value of a member, the last one of that name; null if it is missing.
  const RecordedValue* Find(std::string_view name) const noexcept;
};

/// A line of a recording, or an object in it.
using RecordedObject = RecordedValue;

struct RecordedMember {
  std::string_view name;
  RecordedValue value;
};

/// The error of a line that is not a JSON object.
class NotAnObject : public Error {
 public:
  /// `is` says what the line is instead: "not JSON", "an array".
  NotAnObject(std::string is, const std::string& description)
      : Error(error_number::unspecified, description), is_(std::move(is)) {}

  const std::string& Is() const noexcept { return is_; }

 private:
  std::string is_;
};

/// How many bytes of room behind a line spare `ParseRecordedLine` from moving it.
inline constexpr std::size_t recordedLinePadding = 16;

/// Parses a line where it is: its texts are unescaped in `line`, which is changed thereby and must outlive
/// the result. Throws NotAnObject if it is not a JSON object, Error -2147467259, which describes the fault,
/// if it has deeper values than recordings have or a number beyond the range of a double, and std::bad_alloc
/// if memory runs out.
RecordedObject ParseRecordedLine(std::string& line);

/// Returns the error of an invalid line.
Error RecordingFault(const std::string& fault);

// Each of these reads a member of an object. Throws Error -2147467259, which names the member and what is
// expected of it, if it is missing or has another type or value.

/// Returns the member, whatever its value.
const RecordedValue& RequiredMember(const RecordedObject& object, std::string_view name,
                                    std::string_view expected);

/// Returns a text, a view of the line.
std::string_view RecordedText(const RecordedObject& object, std::string_view name);

bool RecordedTruth(const RecordedObject& object, std::string_view name);

/// Returns an integer from `least` to `most`. A fraction or an exponent makes none.
std::int64_t RecordedInteger(const RecordedObject& object, std::string_view name, std::int64_t least,
                             std::int64_t most);

/// Returns an integer from `least` to the largest of its type.
template <typename Number>
Number RecordedNumber(const RecordedObject& object, std::string_view name, Number least) {
  return static_cast<Number>(RecordedInteger(object, name, least, std::numeric_limits<Number>::max()));
}

/// Returns an object; null if the member is missing.
const RecordedObject* OptionalObject(const RecordedObject& object, std::string_view name);

/// Returns a value as a message shows it: of a long text its beginning, of an object or array only what it
/// is.
std::string Shown(const RecordedValue& value);

/// Returns the error of a member that has another value than `expected`.
Error UnexpectedValue(std::string_view name, const RecordedValue& value, std::string_view expected);

}  // namespace krnqb
