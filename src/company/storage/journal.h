#pragma once

struct sqlite3_file;

namespace krnqb::company {

/// Returns whether an open journal names a file that it shares with the journals of other databases. Undoing
/// such a journal removes the file. A company is a single database, so its own journal never names one.
/// Returns true if the journal cannot be read.
bool NamesAnotherFile(sqlite3_file* journal) noexcept;

}  // namespace krnqb::company
