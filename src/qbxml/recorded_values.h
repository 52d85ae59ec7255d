#pragma once

#include <cstdint>
#include <limits>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>
#include <utility>

#include "krnqb/error.h"

namespace krnqb {

/// A line of a recording, or an object in it.
using RecordedObject = nlohmann::json;

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

/// Parses a line. Throws NotAnObject if it is not a JSON object, Error -2147467259, which describes the
/// fault, if it has deeper values than recordings have or a number beyond the range of a double, and
/// std::bad_alloc if memory runs out.
RecordedObject ParseRecordedLine(const std::string& text);

/// Returns the error of an invalid line.
Error RecordingFault(const std::string& fault);

// Each of these reads a member of an object. Throws Error -2147467259, which names the member and what is
// expected of it, if it is missing or has another type or value.

/// Returns the member, whatever its value.
const RecordedObject& RecordedValue(const RecordedObject& object, std::string_view name,
                                    std::string_view expected);

std::string RecordedText(const RecordedObject& object, std::string_view name);

bool RecordedTruth(const RecordedObject& object, std::string_view name);

/// Returns an integer from `least` to `most`. A fraction or an exponent makes none.
std::int64_t RecordedInteger(const RecordedObject& object, std::string_view name, std::int64_t least,
                             std::int64_t most);

/// Returns an integer from `least` to the largest of its type.
template <typename Number>
Number RecordedNumber(const RecordedObject& object, std::string_view name, Number least) {
  return static_cast<Number>(RecordedInteger(object, name, least, std::numeric_limits<Number>::max()));
}

/// Returns the error of a member that has another value than `expected`.
Error UnexpectedValue(std::string_view name, const RecordedObject& value, std::string_view expected);

}  // namespace krnqb
