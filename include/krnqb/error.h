#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace krnqb {

/// The error numbers that the component itself raises. Run-time errors are small positive numbers; automation
/// errors are HRESULTs read as signed 32-bit integers.
namespace error_number {
inline constexpr std::int32_t invalidProcedureCall = 5;  ///< also: a key missing from a collection
inline constexpr std::int32_t overflow = 6;              ///< also: a value that does not fit in 16 bits
inline constexpr std::int32_t outOfMemory = 7;
inline constexpr std::int32_t subscriptOutOfRange = 9;  ///< also: a table missing from the plan
inline constexpr std::int32_t typeMismatch = 13;
inline constexpr std::int32_t internalError = 51;
inline constexpr std::int32_t pathNotFound = 76;
inline constexpr std::int32_t objectNotSet = 91;  ///< an operation on Nothing
inline constexpr std::int32_t formAlreadyShown = 400;
inline constexpr std::int32_t cannotCreateObject = 429;
inline constexpr std::int32_t memberNotSupported = 438;  ///< the object has no such operation
inline constexpr std::int32_t keyAlreadyPresent = 457;
inline constexpr std::int32_t dialogCancelled = 32755;    ///< the user chose no file
inline constexpr std::int32_t unspecified = -2147467259;  ///< 80004005; also: a malformed XPath expression
}  // namespace error_number

/// Returns the standard English text of a run-time error number or of `unspecified`, or "Automation error"
/// for any other number.
std::string_view StandardDescription(std::int32_t number) noexcept;

/// The component's only exception type: a number and a UTF-8 description.
class Error : public std::exception {
 public:
  /// Creates an error with the standard description of its number.
  explicit Error(std::int32_t errorNumber);
  Error(std::int32_t errorNumber, std::string errorDescription);

  std::int32_t Number() const noexcept { return number_; }
  const std::string& Description() const noexcept { return description_; }
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  std::int32_t number_;
  std::string description_;
};

}  // namespace krnqb
