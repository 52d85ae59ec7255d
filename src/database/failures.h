#pragma once

#include <string>
#include <string_view>

#include "database/storage/file_system.h"
#include "krnqb/error.h"

namespace krnqb::database {

/// What SQLite reports about a failed operation.
struct DatabaseFailure {
  int code = 0;  ///< its extended result code
  std::string file;
  std::string message;
};

/// Throws the Error that describes a failed operation on a database, as `Connection` documents. If the file
/// or its journal has to be repaired, or may not be read or written, the error is of kind `Unspecified` and
/// its description says what to do.
[[noreturn]] void ThrowFailure(const DatabaseFailure& failure, const FileSystem& files);

/// Returns the error for a file that can be used only after something is done about it, which the description
/// says: of kind `Unspecified`, with the number `FileKind::cannotOpen`.
Error NeedsRepair(const FileKind& kind, std::string description);

/// Returns a text of a `FileKind` with the file's path filled in.
std::string TextAbout(const std::string& file, std::string_view text);

}  // namespace krnqb::database
