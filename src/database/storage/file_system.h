#pragma once

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "database/storage/file_kind.h"
#include "database/storage/sealed_file.h"

struct sqlite3;

namespace krnqb::database {

/// The file system through which SQLite sees a database. It consists of two files, the database and its
/// own journal; no other name exists in it, so that nothing the file or a journal contains can make SQLite
/// read, create or remove any other file. It has no memory mapping and no shared memory. Pages have
/// checksums, see `SealedFile`. A journal that is not one of this program's is refused, and a reader leaves
/// every journal alone.
class FileSystem {
 public:
  /// `kind` must outlive this object.
  FileSystem(const FileKind& kind, Interruption interrupted);
  ~FileSystem();
  FileSystem(const FileSystem&) = delete;
  FileSystem& operator=(const FileSystem&) = delete;

  /// Opens `file`, an absolute path, once. Returns an SQLite result code. `connection` must be closed, even
  /// after a failure, before this object is destroyed.
  int Open(const std::filesystem::path& file, int flags, sqlite3** connection);

  /// Returns the file system of a connection that `Open` has opened.
  static const FileSystem& Of(sqlite3* connection) noexcept;

  const FileKind& Kind() const noexcept { return kind_; }
  StorageFault Fault() const noexcept { return database_.fault; }
  /// Returns the page that `StorageFault::DamagedPage` is about, counted from 1.
  std::int64_t DamagedPage() const noexcept { return database_.damagedPage; }
  /// Returns whether the pages have checksums; known once the database has been read.
  bool HasChecksums() const noexcept {
    return database_.formatKnown && database_.format == PageFormat::Checked;
  }
  /// Returns the errno of the last failed system call on the database; 0 if none has failed.
  int SystemError() const noexcept { return database_.systemError; }
  const std::string& Path() const noexcept { return path_; }
  const std::string& Journal() const noexcept { return journal_; }

  struct Survey {
    int result = 0;  ///< an SQLite result code
    std::int64_t pages = 0;
    std::vector<std::int64_t> damaged;  ///< counted from 1
  };
  /// Reads all pages, including unused ones, and checks them if they have checksums. A part of a page at the
  /// end of the file is damaged.
  Survey SurveyPages();

 private:
  struct Callbacks;
  struct System;

  int OpenDatabase(const char* name, sqlite3_file* handle, int flags, int* outFlags) noexcept;
  int OpenJournal(const char* name, sqlite3_file* handle, int flags, int* outFlags) noexcept;
  bool JournalExists() const noexcept;
  std::filesystem::file_type JournalType() const noexcept;

  const FileKind& kind_;
  std::unique_ptr<System> system_;
  std::string path_;
  std::string journal_;
  std::filesystem::path journalPath_;
  SealedFile database_;
  bool readOnly_ = true;
};

}  // namespace krnqb::database
