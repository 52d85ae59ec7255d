#include "krnqb/error.h"

namespace krnqb {

std::string_view StandardDescription(std::int32_t number) noexcept {
  switch (number) {
    case error_number::invalidProcedureCall:
      return "Invalid procedure call or argument";
    case error_number::overflow:
      return "Overflow";
    case error_number::outOfMemory:
      return "Out of memory";
    case error_number::subscriptOutOfRange:
      return "Subscript out of range";
    case error_number::typeMismatch:
      return "Type mismatch";
    case error_number::internalError:
      return "Internal error";
    case error_number::pathNotFound:
      return "Path not found";
    case error_number::objectNotSet:
      return "Object variable or With block variable not set";
    case error_number::formAlreadyShown:
      return "Form already displayed; can't show modally";
    case error_number::cannotCreateObject:
      return "ActiveX component can't create object";
    case error_number::memberNotSupported:
      return "Object doesn't support this property or method";
    case error_number::keyAlreadyPresent:
      return "This key is already associated with an element of this collection";
    case error_number::dialogCancelled:
      return "Cancel was selected.";
    case error_number::unspecified:
      return "Unspecified error";
    default:
      return "Automation error";
  }
}

Error::Error(std::int32_t errorNumber) : Error(errorNumber, std::string(StandardDescription(errorNumber))) {}

Error::Error(std::int32_t number, std::string description)
    : number_(number), description_(std::move(description)) {}

}  // namespace krnqb
