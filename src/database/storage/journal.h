#pragma once

struct sqlite3_file;

namespace krnqb::database {

/// Returns whether an open journal names a file that it shares with the journals of other databases. Undoing
/// such a journal removes the file. The journal of a single database never names one.
/// Returns true if the journal cannot be read.
bool NamesAnotherFile(sqlite3_file* journal) noexcept;

}  // namespace krnqb::database
