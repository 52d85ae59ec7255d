#include "database/failures.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <filesystem>
#include <system_error>

#include "database/storage/system.h"
#include "support/path_text.h"

namespace krnqb::database {
namespace {

[[noreturn]] void CannotOpen(const FileKind& kind, std::string description) {
  throw Error(kind.cannotOpen, std::move(description));
}

// Throws if the file system knows better than SQLite what is wrong.
void ThrowFault(const std::string& file, const FileSystem& files) {
  const FileKind& kind = files.Kind();
  switch (files.Fault()) {
    case StorageFault::DamagedPage:
      throw NeedsRepair(
          kind, fmt::format("The {} {} is damaged: page {} does not match its checksum; {}", kind.name, file,
                            files.DamagedPage(), TextAbout(file, kind.damageRemedy)));
    case StorageFault::DamagedJournal:
      throw NeedsRepair(kind,
                        fmt::format("The interrupted {} into the {} {} cannot be undone: its journal {} "
                                    "is damaged; restore a copy of the file and remove the journal",
                                    kind.writer, kind.name, file, files.Journal()));
    case StorageFault::ForeignJournal:
      throw NeedsRepair(
          kind, fmt::format("The journal {} names another file or is not a regular file, so no {} has "
                            "left it; {}",
                            files.Journal(), kind.writer, TextAbout(file, kind.journalRemedy)));
    case StorageFault::WriteAheadLog:
      throw NeedsRepair(
          kind, fmt::format("The {} {} is marked as having a write-ahead log, which {} never have; {}",
                            kind.name, file, kind.plural, TextAbout(file, kind.restoreRemedy)));
    case StorageFault::None:
      break;
  }
}

std::string SystemText(int systemError) {
  return std::generic_category().message(systemError);
}

[[noreturn]] void ThrowUnopened(const FileKind& kind, const DatabaseFailure& failure, int systemError) {
  const std::string& file = failure.file;
  if (const int fault = AccessError(PathFrom(file), Use::Reading); fault != 0) {
    throw NeedsRepair(
        kind, fmt::format("The {} {} cannot be opened: {}; make sure that you have permission to read it",
                          kind.name, file, SystemText(fault)));
  }
  CannotOpen(kind, fmt::format("The {} {} cannot be opened: {}.", kind.name, file,
                               systemError == 0 ? failure.message : SystemText(systemError)));
}

// A writer writes the file itself and its journal, beside it.
[[noreturn]] void ThrowReadOnly(const FileKind& kind, const DatabaseFailure& failure) {
  const std::string& file = failure.file;
  if (const int fault = AccessError(PathFrom(file), Use::Writing); fault != 0) {
    throw NeedsRepair(
        kind, fmt::format("The {} {} cannot be written: {}; make sure that you have permission to change it",
                          kind.name, file, SystemText(fault)));
  }
  const std::filesystem::path folder = PathFrom(file).parent_path();
  if (const int fault = AccessError(folder, Use::Writing); fault != 0) {
    throw NeedsRepair(
        kind, fmt::format("The {} {} cannot be written: no journal can be created in its folder {}: {}; make "
                          "sure that you have permission to create files there",
                          kind.name, file, TextOfPath(folder), SystemText(fault)));
  }
  CannotOpen(kind, fmt::format("The {} {} cannot be written: {}.", kind.name, file, failure.message));
}

[[noreturn]] void ThrowInputOutput(const FileKind& kind, const DatabaseFailure& failure, int systemError) {
  const std::string reason = systemError == 0 ? failure.message : SystemText(systemError);
  CannotOpen(kind, fmt::format("The {} {} cannot be read or written: {}.", kind.name, failure.file, reason));
}

}  // namespace

std::string TextAbout(const std::string& file, std::string_view text) {
  return fmt::format(fmt::runtime(text), file);
}

Error NeedsRepair(const FileKind& kind, std::string description) {
  return {ErrorKind::Unspecified, kind.cannotOpen, std::move(description)};
}

void ThrowFailure(const DatabaseFailure& failure, const FileSystem& files) {
  const FileKind& kind = files.Kind();
  const std::string& file = failure.file;
  const int code = failure.code & 0xFF;  // the rest are its details
  if (code == SQLITE_INTERRUPT) throw Error(error_number::unspecified, "interrupted");
  if (code == SQLITE_NOMEM) {
    throw Error(error_number::outOfMemory,
                fmt::format("There is not enough memory to use the {} {}.", kind.name, file));
  }
  ThrowFault(file, files);
  if (failure.code == SQLITE_READONLY_ROLLBACK) {
    throw NeedsRepair(kind, TextAbout(file, kind.unfinishedWriting));
  }
  switch (code) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      CannotOpen(kind, fmt::format("The {} {} is locked: another program is using it.", kind.name, file));
    case SQLITE_NOTADB:
      CannotOpen(kind, fmt::format("The file {} is not a {}.", file, kind.name));
    case SQLITE_CORRUPT:
      throw NeedsRepair(kind, fmt::format("The {} {} is damaged: {}; {}", kind.name, file, failure.message,
                                          TextAbout(file, kind.damageRemedy)));
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
      ThrowUnopened(kind, failure, files.SystemError());
    case SQLITE_READONLY:
      ThrowReadOnly(kind, failure);
    case SQLITE_FULL:
      CannotOpen(kind, fmt::format("The {} {} cannot be written: the disk is full.", kind.name, file));
    case SQLITE_IOERR:
      ThrowInputOutput(kind, failure, files.SystemError());
    default:
      throw Error(kind.unexpected,
                  fmt::format("An operation on the {} {} failed: {}.", kind.name, file, failure.message));
  }
}

}  // namespace krnqb::database
