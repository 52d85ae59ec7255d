#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace krnqb {

/// The error numbers that the component raises itself. Run-time errors are small and positive; automation
/// errors are HRESULTs read as signed 32-bit integers.
namespace error_number {
inline constexpr std::int32_t invalidProcedureCall = 5;  ///< also: a key that a collection does not have
inline constexpr std::int32_t overflow = 6;              ///< also: a value that leaves 16 bits
inline constexpr std::int32_t outOfMemory = 7;
inline constexpr std::int32_t subscriptOutOfRange = 9;  ///< also: a table that the plan does not have
inline constexpr std::int32_t typeMismatch = 13;
inline constexpr std::int32_t internalError = 51;
inline constexpr std::int32_t pathNotFound = 76;
inline constexpr std::int32_t objectNotSet = 91;  ///< an operation on nothing
inline constexpr std::int32_t formAlreadyShown = 400;
inline constexpr std::int32_t cannotCreateObject = 429;
inline constexpr std::int32_t memberNotSupported = 438;  ///< the object has no such operation
inline constexpr std::int32_t keyAlreadyPresent = 457;
inline constexpr std::int32_t dialogCancelled = 32755;    ///< a person chose no file
inline constexpr std::int32_t unspecified = -2147467259;  ///< 80004005, also: a malformed XPath
}  // namespace error_number

/// The standard English text of a run-time error number, or of `unspecified`; "Automation error" for any
/// other.
std::string_view StandardDescription(std::int32_t number) noexcept;

/// The one exception type of the component: a number and a description in UTF-8.
class Error : public std::exception {
 public:
  /// An error with the standard description of its number.
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
