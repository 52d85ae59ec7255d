#include "database/storage/file_system.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <array>
#include <cstring>

#include "database/storage/journal.h"
#include "database/storage/system.h"
#include "support/path_text.h"

namespace krnqb::database {
namespace {

bool IsPresent(std::filesystem::file_type type) noexcept {
  return type != std::filesystem::file_type::not_found && type != std::filesystem::file_type::none;
}

}  // namespace

struct FileSystem::System {
  sqlite3_vfs* own = nullptr;  // the system's own file system, which does the work
  sqlite3_vfs restricted{};
  std::string name;
};

// The functions that SQLite calls. None of them throws.
struct FileSystem::Callbacks {
  static FileSystem& Of(sqlite3_vfs* vfs) noexcept { return *static_cast<FileSystem*>(vfs->pAppData); }
  static sqlite3_vfs* Own(sqlite3_vfs* vfs) noexcept { return Of(vfs).system_->own; }

  static int Open(sqlite3_vfs* vfs, const char* name, sqlite3_file* handle, int flags, int* outFlags) {
    FileSystem& files = Of(vfs);
    handle->pMethods = nullptr;
    if (name != nullptr && files.path_ == name && (flags & SQLITE_OPEN_MAIN_DB) != 0) {
      return files.OpenDatabase(name, handle, flags, outFlags);
    }
    if (name != nullptr && files.journal_ == name && (flags & SQLITE_OPEN_MAIN_JOURNAL) != 0) {
      return files.OpenJournal(name, handle, flags, outFlags);
    }
    return SQLITE_CANTOPEN;
  }

  static int Delete(sqlite3_vfs* vfs, const char* name, int syncFolder) {
    FileSystem& files = Of(vfs);
    if (files.journal_ != name) return SQLITE_IOERR_DELETE_NOENT;
    if (files.readOnly_) return SQLITE_READONLY;
    files.database_.undoing = false;
    return Own(vfs)->xDelete(Own(vfs), name, syncFolder);
  }

  static int Access(sqlite3_vfs* vfs, const char* name, int flags, int* result) {
    const FileSystem& files = Of(vfs);
    if (files.journal_ == name && flags == SQLITE_ACCESS_EXISTS) {
      *result = static_cast<int>(files.JournalExists());
      return SQLITE_OK;
    }
    if (files.path_ == name) return Own(vfs)->xAccess(Own(vfs), name, flags, result);
    *result = 0;
    return SQLITE_OK;
  }

  static int FullPathname(sqlite3_vfs* vfs, const char* name, int size, char* path) {
    return Own(vfs)->xFullPathname(Own(vfs), name, size, path);
  }

  static int Randomness(sqlite3_vfs* vfs, int count, char* bytes) {
    return Own(vfs)->xRandomness(Own(vfs), count, bytes);
  }

  static int Sleep(sqlite3_vfs* vfs, int microseconds) { return Own(vfs)->xSleep(Own(vfs), microseconds); }

  static int CurrentTime(sqlite3_vfs* vfs, double* day) { return Own(vfs)->xCurrentTime(Own(vfs), day); }

  static int GetLastError(sqlite3_vfs* vfs, int size, char* text) {
    return Own(vfs)->xGetLastError(Own(vfs), size, text);
  }
};

FileSystem::FileSystem(const FileKind& kind, Interruption interrupted)
    : kind_(kind), system_(std::make_unique<System>()) {
  database_.interrupted = std::move(interrupted);
  system_->own = sqlite3_vfs_find(SystemFilesName());
  system_->name = fmt::format("krnqb-{}", static_cast<const void*>(this));
  sqlite3_vfs& vfs = system_->restricted;
  vfs.iVersion = 1;
  vfs.szOsFile = SealedHandleSize() + system_->own->szOsFile;
  vfs.mxPathname = system_->own->mxPathname;
  vfs.zName = system_->name.c_str();
  vfs.pAppData = this;
  vfs.xOpen = Callbacks::Open;
  vfs.xDelete = Callbacks::Delete;
  vfs.xAccess = Callbacks::Access;
  vfs.xFullPathname = Callbacks::FullPathname;
  vfs.xRandomness = Callbacks::Randomness;
  vfs.xSleep = Callbacks::Sleep;
  vfs.xCurrentTime = Callbacks::CurrentTime;
  vfs.xGetLastError = Callbacks::GetLastError;
}

FileSystem::~FileSystem() = default;

int FileSystem::Open(const std::filesystem::path& file, int flags, sqlite3** connection) {
  // The journal is beside the file itself, not beside a link to it.
  std::string resolved(static_cast<std::size_t>(system_->own->mxPathname) + 1, '\0');
  const int found = system_->own->xFullPathname(system_->own, TextOfPath(file).c_str(),
                                                static_cast<int>(resolved.size()), resolved.data());
  if (found != SQLITE_OK && found != SQLITE_OK_SYMLINK) return found;
  resolved.resize(std::strlen(resolved.c_str()));
  path_ = resolved;
  journal_ = path_ + "-journal";
  journalPath_ = PathFrom(journal_);

  // Only this connection uses the file system; it needs the name no longer than to find it.
  const int registered = sqlite3_vfs_register(&system_->restricted, 0);
  if (registered != SQLITE_OK) return registered;
  const int result = sqlite3_open_v2(path_.c_str(), connection, flags, system_->name.c_str());
  sqlite3_vfs_unregister(&system_->restricted);
  return result;
}

const FileSystem& FileSystem::Of(sqlite3* connection) noexcept {
  sqlite3_vfs* vfs = nullptr;
  sqlite3_file_control(connection, "main", SQLITE_FCNTL_VFS_POINTER, static_cast<void*>(&vfs));
  return Callbacks::Of(vfs);
}

int FileSystem::OpenDatabase(const char* name, sqlite3_file* handle, int flags, int* outFlags) noexcept {
  sqlite3_file* const file = SystemFileOf(handle);
  int opened = 0;
  const int result = system_->own->xOpen(system_->own, name, file, flags, &opened);
  if (result != SQLITE_OK) {
    database_.systemError = LastSystemError();
    return result;
  }
  if (outFlags != nullptr) *outFlags = opened;
  readOnly_ = (opened & SQLITE_OPEN_READONLY) != 0;
  database_.file = file;
  OpenHandle(handle, database_);
  return SQLITE_OK;
}

int FileSystem::OpenJournal(const char* name, sqlite3_file* handle, int flags, int* outFlags) noexcept {
  const auto refuse = [&] {
    database_.fault = StorageFault::ForeignJournal;
    return SQLITE_CANTOPEN;
  };
  const std::filesystem::file_type type = JournalType();
  const bool exists = IsPresent(type);
  if (exists && type != std::filesystem::file_type::regular)
    return refuse();  // opening a pipe would wait for its other end
  const int result = system_->own->xOpen(system_->own, name, handle, flags, outFlags);
  if (result != SQLITE_OK) return result;
  if (exists && NamesAnotherFile(handle)) {
    handle->pMethods->xClose(handle);
    handle->pMethods = nullptr;
    return refuse();
  }
  // A journal that SQLite opens for writing, but does not create, is one whose load it undoes.
  database_.undoing = (flags & SQLITE_OPEN_READWRITE) != 0 && (flags & SQLITE_OPEN_CREATE) == 0;
  return SQLITE_OK;
}

// To SQLite an empty journal is a missing one. Anything but a file counts, so that opening it is tried and
// refused.
bool FileSystem::JournalExists() const noexcept {
  const std::filesystem::file_type type = JournalType();
  if (type != std::filesystem::file_type::regular) return IsPresent(type);
  std::error_code unknown;
  const std::uintmax_t size = std::filesystem::file_size(journalPath_, unknown);
  return !unknown && size > 0;
}

std::filesystem::file_type FileSystem::JournalType() const noexcept {
  std::error_code unknown;
  return std::filesystem::symlink_status(journalPath_, unknown).type();
}

FileSystem::Survey FileSystem::SurveyPages() {
  Survey survey;
  sqlite3_file* const file = database_.file;
  const bool wasLocked = database_.locked;
  if (!wasLocked) {
    survey.result = file->pMethods->xLock(file, SQLITE_LOCK_SHARED);
    if (survey.result != SQLITE_OK) return survey;
  }
  survey.result = SurveyLockedPages(database_, survey.pages, survey.damaged);
  if (!wasLocked) file->pMethods->xUnlock(file, SQLITE_LOCK_NONE);
  return survey;
}

}  // namespace krnqb::database
