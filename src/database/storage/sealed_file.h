#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "database/storage/format.h"
#include "database/storage/interruption.h"
#include "database/storage/page_checksum.h"

struct sqlite3_file;
struct sqlite3_io_methods;

namespace krnqb::database {

/// What is wrong with a database or its journal, as far as SQLite's result code does not say it.
enum class StorageFault : std::uint8_t {
  None,
  DamagedPage,     ///< a page lacks its checksum, or the file ends within it
  DamagedJournal,  ///< a page in the journal of an interrupted load lacks its checksum
  ForeignJournal,  ///< the journal is not a file, or names another one
  WriteAheadLog    ///< the file is marked as having a write-ahead log
};

/// A database that a connection has open. Pages are checked when they are read and get their checksum
/// when they are written; SQLite keeps the room for it free.
struct SealedFile {
  sqlite3_file* file = nullptr;  ///< opened by the system's own file system
  Interruption interrupted;
  bool locked = false;
  bool undoing = false;  ///< an interrupted load is being undone: pages come from its journal
  bool formatKnown = false;
  PageFormat format = PageFormat::Plain;  ///< only if `formatKnown`
  StorageFault fault = StorageFault::None;
  std::int64_t damagedPage = 0;                   ///< the first one found, from 1
  int systemError = 0;                            ///< errno of the last system call that failed
  std::array<unsigned char, pageSize> page = {};  ///< for pages of which SQLite reads a part
};

// SQLite knows an open database by a handle, in memory that it provides. The system's own file follows
// the handle there.

/// Returns the size of a handle in bytes, without the system's own file.
int SealedHandleSize() noexcept;

/// Opens a handle for `file`, whose `file->file` must be open. `handle` is the memory that SQLite provides.
void OpenHandle(sqlite3_file* handle, SealedFile& file) noexcept;

/// Returns where the system's own file of a handle is in memory.
sqlite3_file* SystemFileOf(sqlite3_file* handle) noexcept;

/// Reads all pages of a locked file, including unused ones, and checks them if they have checksums. Sets the
/// number of pages, a part of one at the end of the file included, and the damaged pages, counted from 1.
/// Returns an SQLite result code: SQLITE_INTERRUPT if it is interrupted.
int SurveyLockedPages(SealedFile& file, std::int64_t& pages, std::vector<std::int64_t>& damaged);

/// Determines how the file's pages are stored, unless that is known. The file must be locked, because its
/// first page may otherwise be just written. Returns an SQLite result code.
int LearnFormat(SealedFile& file) noexcept;

}  // namespace krnqb::database
