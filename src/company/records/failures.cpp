#include "company/records/failures.h"

#include <fcntl.h>
#include <fmt/format.h>
#include <sqlite3.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>

#include "company/records/errors.h"

namespace krnqb::company {
namespace {

[[noreturn]] void CannotOpen(std::string description) {
  throw Error(company_error::cannotOpen, std::move(description));
}

std::string RestoreText(const std::string& file) {
  return fmt::format("restore a copy of the file (krnqb company check {} lists all damage)", file);
}

// Throws if the file system knows better than SQLite what is wrong.
void ThrowFault(const std::string& file, const FileSystem& files) {
  switch (files.Fault()) {
    case StorageFault::DamagedPage:
      throw CompanyNeedsRepair(
          fmt::format("The company file {} is damaged: page {} does not match its checksum; {}", file,
                      files.DamagedPage(), RestoreText(file)));
    case StorageFault::DamagedJournal:
      throw CompanyNeedsRepair(
          fmt::format("The interrupted load into the company file {} cannot be undone: its journal {} is "
                      "damaged; restore a copy of the file and remove the journal",
                      file, files.Journal()));
    case StorageFault::ForeignJournal:
      throw CompanyNeedsRepair(
          fmt::format("The journal {} names another file or is not a regular file, so no load has left it; "
                      "remove it and run krnqb company check {}",
                      files.Journal(), file));
    case StorageFault::WriteAheadLog:
      throw CompanyNeedsRepair(
          fmt::format("The company file {} is marked as having a write-ahead log, which company files never "
                      "have; restore a copy of the file",
                      file));
    case StorageFault::None:
      break;
  }
}

// Returns why this process may not use a file in this way (R_OK, W_OK); 0 if it may. Does not open the file:
// closing it would release the locks of the process's other connections to it.
int AccessFault(const std::string& file, int access) noexcept {
  return ::faccessat(AT_FDCWD, file.c_str(), access, AT_EACCESS) == 0 ? 0 : errno;
}

std::string SystemText(int systemError) {
  return std::generic_category().message(systemError);
}

[[noreturn]] void ThrowUnopened(const DatabaseFailure& failure, int systemError) {
  const std::string& file = failure.file;
  if (const int fault = AccessFault(file, R_OK); fault != 0) {
    throw CompanyNeedsRepair(
        fmt::format("The company file {} cannot be opened: {}; make sure that you have permission to read it",
                    file, SystemText(fault)));
  }
  CannotOpen(fmt::format("The company file {} cannot be opened: {}.", file,
                         systemError == 0 ? failure.message : SystemText(systemError)));
}

// A load writes the file itself and its journal, beside it.
[[noreturn]] void ThrowReadOnly(const DatabaseFailure& failure) {
  const std::string& file = failure.file;
  if (const int fault = AccessFault(file, W_OK); fault != 0) {
    throw CompanyNeedsRepair(fmt::format(
        "The company file {} cannot be written: {}; make sure that you have permission to change it", file,
        SystemText(fault)));
  }
  const std::string folder = std::filesystem::path(file).parent_path().string();
  if (const int fault = AccessFault(folder, W_OK); fault != 0) {
    throw CompanyNeedsRepair(
        fmt::format("The company file {} cannot be written: no journal can be created in its folder {}: {}; "
                    "make sure that you have permission to create files there",
                    file, folder, SystemText(fault)));
  }
  CannotOpen(fmt::format("The company file {} cannot be written: {}.", file, failure.message));
}

[[noreturn]] void ThrowInputOutput(const DatabaseFailure& failure, int systemError) {
  const std::string reason = systemError == 0 ? failure.message : SystemText(systemError);
  CannotOpen(fmt::format("The company file {} cannot be read or written: {}.", failure.file, reason));
}

}  // namespace

Error CompanyNeedsRepair(std::string description) {
  return {ErrorKind::Unspecified, company_error::cannotOpen, std::move(description)};
}

void ThrowFailure(const DatabaseFailure& failure, const FileSystem& files) {
  const std::string& file = failure.file;
  const int kind = failure.code & 0xFF;  // the rest are its details
  if (kind == SQLITE_INTERRUPT) throw Error(error_number::unspecified, "interrupted");
  if (kind == SQLITE_NOMEM) {
    throw Error(error_number::outOfMemory,
                fmt::format("There is not enough memory to use the company file {}.", file));
  }
  ThrowFault(file, files);
  if (failure.code == SQLITE_READONLY_ROLLBACK) {
    throw CompanyNeedsRepair(
        fmt::format("A load into the company file {0} was interrupted and has to be undone first; run krnqb "
                    "company check --fix {0}",
                    file));
  }
  switch (kind) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      CannotOpen(fmt::format("The company file {} is locked: another program is using it.", file));
    case SQLITE_NOTADB:
      CannotOpen(fmt::format("The file {} is not a company file.", file));
    case SQLITE_CORRUPT:
      throw CompanyNeedsRepair(
          fmt::format("The company file {} is damaged: {}; {}", file, failure.message, RestoreText(file)));
    case SQLITE_CANTOPEN:
    case SQLITE_PERM:
    case SQLITE_AUTH:
      ThrowUnopened(failure, files.SystemError());
    case SQLITE_READONLY:
      ThrowReadOnly(failure);
    case SQLITE_FULL:
      CannotOpen(fmt::format("The company file {} cannot be written: the disk is full.", file));
    case SQLITE_IOERR:
      ThrowInputOutput(failure, files.SystemError());
    default:
      throw Error(company_error::unexpected,
                  fmt::format("An operation on the company file {} failed: {}.", file, failure.message));
  }
}

}  // namespace krnqb::company
