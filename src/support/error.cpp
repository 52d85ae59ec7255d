#include "krnqb/error.h"

#include <array>
#include <utility>

namespace krnqb {
namespace {

struct KnownError {
  ErrorKind kind;
  std::int32_t number;
  std::string_view description;
};

constexpr std::string_view unknownDescription = "Automation error";

// Run-time errors and `unspecified`: the number determines the kind.
constexpr std::array numberedErrors{
    KnownError{ErrorKind::InvalidProcedureCall, error_number::invalidProcedureCall,
               "Invalid procedure call or argument"},
    KnownError{ErrorKind::Overflow, error_number::overflow, "Overflow"},
    KnownError{ErrorKind::OutOfMemory, error_number::outOfMemory, "Out of memory"},
    KnownError{ErrorKind::SubscriptOutOfRange, error_number::subscriptOutOfRange, "Subscript out of range"},
    KnownError{ErrorKind::TypeMismatch, error_number::typeMismatch, "Type mismatch"},
    KnownError{ErrorKind::Internal, error_number::internalError, "Internal error"},
    KnownError{ErrorKind::PathNotFound, error_number::pathNotFound, "Path not found"},
    KnownError{ErrorKind::ObjectNotSet, error_number::objectNotSet,
               "Object variable or With block variable not set"},
    KnownError{ErrorKind::FormAlreadyShown, error_number::formAlreadyShown,
               "Form already displayed; can't show modally"},
    KnownError{ErrorKind::CannotCreateObject, error_number::cannotCreateObject,
               "ActiveX component can't create object"},
    KnownError{ErrorKind::MemberNotSupported, error_number::memberNotSupported,
               "Object doesn't support this property or method"},
    KnownError{ErrorKind::KeyAlreadyPresent, error_number::keyAlreadyPresent,
               "This key is already associated with an element of this collection"},
    KnownError{ErrorKind::DialogCancelled, error_number::dialogCancelled, "Cancel was selected."},
    KnownError{ErrorKind::Unspecified, error_number::unspecified, "Unspecified error"}};

// Errors of the session and the company check. Their numbers also occur with another meaning, so only the
// kind says which is meant.
constexpr std::array sessionErrors{
    KnownError{ErrorKind::ProcessorMissing, error_number::cannotCreateObject,
               "You must have a U.S. version of one of the following Quickbooks 2002 or 2003 products to "
               "perform this import:  Quickbooks Premier, Quickbooks Premier Accountant Edition, or "
               "QuickBooks Pro."},
    KnownError{ErrorKind::CompanyNotOpen, -2147220458,
               "Your QuickBooks company file must be open to perform this import."},
    KnownError{ErrorKind::FiscalMonthMissing, -2147221404,
               "To perform the import you need to provide the QuickBooks fiscal year start month."},
    KnownError{ErrorKind::FiscalMonthUnreadable, -2147221504,
               "To perform the import from QuickBooks Pro you need the United States version of QuickBooks "
               "Pro and an English regional setting locale."},
    KnownError{ErrorKind::UpdateRequired, -2147221504, "Your QuickBooks must be updated to R2."}};

constexpr KnownError otherError{ErrorKind::Other, 0, unknownDescription};

const KnownError& ErrorOfNumber(std::int32_t number) noexcept {
  for (const KnownError& known : numberedErrors) {
    if (known.number == number) return known;
  }
  return otherError;
}

const KnownError& ErrorOfKind(ErrorKind kind) noexcept {
  for (const KnownError& known : numberedErrors) {
    if (known.kind == kind) return known;
  }
  for (const KnownError& known : sessionErrors) {
    if (known.kind == kind) return known;
  }
  return otherError;
}

}  // namespace

std::int32_t NumberOf(ErrorKind kind) noexcept {
  return ErrorOfKind(kind).number;
}

std::string_view StandardDescription(std::int32_t number) noexcept {
  return ErrorOfNumber(number).description;
}

Error::Error(std::int32_t errorNumber) : Error(errorNumber, std::string(StandardDescription(errorNumber))) {}

Error::Error(std::int32_t errorNumber, std::string errorDescription)
    : Error(ErrorOfNumber(errorNumber).kind, errorNumber, std::move(errorDescription)) {}

Error::Error(ErrorKind errorKind)
    : Error(errorKind, ErrorOfKind(errorKind).number, std::string(ErrorOfKind(errorKind).description)) {}

Error::Error(ErrorKind errorKind, std::int32_t errorNumber, std::string errorDescription)
    : kind_(errorKind), number_(errorNumber), description_(std::move(errorDescription)) {}

}  // namespace krnqb
