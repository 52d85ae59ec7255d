#pragma once

#include <string>

#include "company/storage/file_system.h"
#include "krnqb/error.h"

namespace krnqb::company {

/// What SQLite reports about a failed operation.
struct DatabaseFailure {
  int code = 0;  ///< its extended result code
  std::string file;
  std::string message;
};

/// Throws the Error that describes a failed operation on a company, as `Database` documents. If the company
/// or its journal has to be repaired, or may not be read or written, the error is of kind `Unspecified` and
/// its description says what to do.
[[noreturn]] void ThrowFailure(const DatabaseFailure& failure, const FileSystem& files);

/// Returns the error for a company that can be used only after something is done about it, which the
/// description says: of kind `Unspecified`, with the number `company_error::cannotOpen`.
Error CompanyNeedsRepair(std::string description);

}  // namespace krnqb::company
