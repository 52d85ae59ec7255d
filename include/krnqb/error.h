#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <string_view>

namespace krnqb {

/// The error numbers that the component itself raises. Run-time errors are small positive numbers; automation
/// errors are HRESULTs read as signed 32-bit integers.
namespace error_number {
inline constexpr std::int32_t invalidProcedureCall = 5;   ///< also: a key is missing from a collection
inline constexpr std::int32_t overflow = 6;               ///< also: a value does not fit in 16 bits
inline constexpr std::int32_t outOfMemory = 7;            ///< also: what was imported does not fit in memory
inline constexpr std::int32_t subscriptOutOfRange = 9;    ///< also: a table is missing from the plan
inline constexpr std::int32_t typeMismatch = 13;          ///< a wrong type, or a text that is not a number
inline constexpr std::int32_t internalError = 51;         ///< an exception that is not an `Error`
inline constexpr std::int32_t pathNotFound = 76;          ///< a folder is missing or cannot be read
inline constexpr std::int32_t objectNotSet = 91;          ///< an operation on Nothing
inline constexpr std::int32_t formAlreadyShown = 400;     ///< a dialog of the component is already open
inline constexpr std::int32_t cannotCreateObject = 429;   ///< QuickBooks is not installed
inline constexpr std::int32_t memberNotSupported = 438;   ///< the object has no such operation
inline constexpr std::int32_t keyAlreadyPresent = 457;    ///< a collection already has the key
inline constexpr std::int32_t dialogCancelled = 32755;    ///< the user chose no file
inline constexpr std::int32_t unspecified = -2147467259;  ///< 80004005; also: a malformed XPath expression
}  // namespace error_number

/// The meaning of an error. Two kinds can have the same number, and an error of an outside object can have
/// any number.
enum class ErrorKind : std::uint8_t {
  Other,                  ///< an error of an outside object, or a number that no kind has
  InvalidProcedureCall,   ///< Error 5
  Overflow,               ///< Error 6
  OutOfMemory,            ///< Error 7
  SubscriptOutOfRange,    ///< Error 9
  TypeMismatch,           ///< Error 13
  Internal,               ///< Error 51
  PathNotFound,           ///< Error 76
  ObjectNotSet,           ///< Error 91
  FormAlreadyShown,       ///< Error 400
  CannotCreateObject,     ///< Error 429, of anything but the request processor
  MemberNotSupported,     ///< Error 438
  KeyAlreadyPresent,      ///< Error 457
  DialogCancelled,        ///< Error 32755
  Unspecified,            ///< Error -2147467259
  ProcessorMissing,       ///< the session cannot be opened: QuickBooks' request processor is not installed
  CompanyNotOpen,         ///< the session cannot be opened: no company is open
  SessionRefused,         ///< the session cannot be opened for another reason
  RequestRefused,         ///< QuickBooks refused a request; number and description are the processor's
  FiscalMonthMissing,     ///< the company's response does not contain the first month of its fiscal year
  FiscalMonthUnreadable,  ///< the first month of the fiscal year is not an English month name
  UpdateRequired          ///< the company does not support qbXML 1.1
};

/// Returns the number of a kind; 0 for `Other`, `SessionRefused` and `RequestRefused`, which can have any
/// number.
std::int32_t NumberOf(ErrorKind kind) noexcept;

/// Returns the standard English text of a run-time error number or of `unspecified`, or "Automation error"
/// for any other number.
std::string_view StandardDescription(std::int32_t number) noexcept;

/// The component's only exception type: a number, a description in UTF-8, and a kind.
class Error : public std::exception {
 public:
  /// Creates an error with the standard description of its number. The kind is that of the run-time error
  /// number; `Other` for any other number.
  explicit Error(std::int32_t errorNumber);
  /// Creates an error with another description; the kind is derived from the number in the same way.
  Error(std::int32_t errorNumber, std::string errorDescription);
  /// Creates an error with the number and description of its kind.
  explicit Error(ErrorKind errorKind);
  /// Creates an error of a kind that can have any number.
  Error(ErrorKind errorKind, std::int32_t errorNumber, std::string errorDescription);

  /// Returns the error's number, as a host sees it.
  std::int32_t Number() const noexcept { return number_; }
  /// Returns the description, in UTF-8.
  const std::string& Description() const noexcept { return description_; }
  /// Returns the kind, which distinguishes errors that have the same number.
  ErrorKind Kind() const noexcept { return kind_; }
  /// Returns the description.
  const char* what() const noexcept override { return description_.c_str(); }

 private:
  ErrorKind kind_;
  std::int32_t number_;
  std::string description_;
};

}  // namespace krnqb
