#include "database/storage/sealed_file.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <new>

#include "database/storage/system.h"

namespace krnqb::database {

struct SealedFileHandle : sqlite3_file {
  SealedFile* sealed;
};

namespace {

constexpr auto pageLength = static_cast<sqlite3_int64>(pageSize);

// SQLite locks bytes of this page, so it never writes it.
constexpr sqlite3_int64 lockPage = 0x4000'0000 / pageLength + 1;

// SQLite passes only handles that `OpenHandle` has opened.
SealedFile& Of(sqlite3_file* handle) noexcept {
  // NOLINTNEXTLINE(cppcoreguidelines-pro-type-static-cast-downcast)
  return *static_cast<SealedFileHandle*>(handle)->sealed;
}

sqlite3_file* SystemOf(sqlite3_file* handle) noexcept {
  return Of(handle).file;
}

// Keeps the reason of a failed system call, which SQLite's result code does not say.
int Noted(SealedFile& file, int resultCode) noexcept {
  if ((resultCode & 0xFF) == SQLITE_IOERR && resultCode != SQLITE_IOERR_SHORT_READ)
    file.systemError = LastSystemError();
  return resultCode;
}

int Fault(SealedFile& file, StorageFault fault, int resultCode) noexcept {
  if (file.fault == StorageFault::None) file.fault = fault;
  return resultCode;
}

int Damage(SealedFile& file, sqlite3_int64 page) noexcept {
  if (file.fault == StorageFault::None) file.damagedPage = page;
  return Fault(file, StorageFault::DamagedPage, SQLITE_CORRUPT);
}

// Reads a whole page and checks it.
int ReadPage(SealedFile& file, Page page, sqlite3_int64 number) noexcept {
  const int result = file.file->pMethods->xRead(file.file, page.data(), static_cast<int>(pageSize),
                                                (number - 1) * pageLength);
  if (result == SQLITE_IOERR_SHORT_READ) {
    sqlite3_int64 size = 0;
    const int sized = file.file->pMethods->xFileSize(file.file, &size);
    if (sized != SQLITE_OK) return sized;
    return size == 0 ? result : Damage(file, number);  // a new database is read before it has any pages
  }
  if (result != SQLITE_OK) return Noted(file, result);
  if (!HasItsChecksum(page, static_cast<std::uint64_t>(number))) return Damage(file, number);
  if (number != 1) return SQLITE_OK;
  DatabaseHeader header{};
  std::copy_n(page.begin(), headerSize, header.begin());
  return HasRoomForChecksums(header) ? SQLITE_OK : Damage(file, number);
}

// Reads any part of the file. Parts of pages, such as the change counter in the first one, come from a page
// that is read and checked as a whole.
int ReadChecked(SealedFile& file, unsigned char* bytes, sqlite3_int64 length, sqlite3_int64 offset) noexcept {
  while (length > 0) {
    const sqlite3_int64 number = offset / pageLength + 1;
    const sqlite3_int64 place = offset % pageLength;
    const sqlite3_int64 part = std::min(length, pageLength - place);
    const bool whole = part == pageLength;
    const Page page = whole ? Page(bytes, pageSize) : Page(file.page);
    const int result = ReadPage(file, page, number);
    if (result == SQLITE_IOERR_SHORT_READ) std::memset(bytes, 0, static_cast<std::size_t>(length));
    if (result != SQLITE_OK) return result;
    if (!whole) std::memcpy(bytes, file.page.data() + place, static_cast<std::size_t>(part));
    bytes += part;
    offset += part;
    length -= part;
  }
  return SQLITE_OK;
}

// A page that is put back is as the load found it, with its checksum. A page of zeros only makes room.
bool MayBePutBack(ConstPage page, std::uint64_t number) noexcept {
  return HasItsChecksum(page, number) ||
         std::ranges::all_of(page, [](unsigned char byte) { return byte == 0; });
}

int Close(sqlite3_file* handle) {
  SealedFile& file = Of(handle);
  const int result = file.file->pMethods->xClose(file.file);
  file.file = nullptr;
  return result;
}

int Read(sqlite3_file* handle, void* bytes, int length, sqlite3_int64 offset) {
  SealedFile& file = Of(handle);
  if (file.interrupted && file.interrupted()) return SQLITE_INTERRUPT;
  // Without a lock only the header is read, as a first guess that is not relied on.
  if (!file.locked) return Noted(file, file.file->pMethods->xRead(file.file, bytes, length, offset));
  if (const int result = LearnFormat(file); result != SQLITE_OK) return result;
  if (file.format == PageFormat::Plain) {
    return Noted(file, file.file->pMethods->xRead(file.file, bytes, length, offset));
  }
  return ReadChecked(file, static_cast<unsigned char*>(bytes), length, offset);
}

int Write(sqlite3_file* handle, const void* bytes, int length, sqlite3_int64 offset) {
  SealedFile& file = Of(handle);
  if (const int result = LearnFormat(file); result != SQLITE_OK) return result;
  if (file.format == PageFormat::Checked) {
    if (length != static_cast<int>(pageSize) || offset % pageLength != 0) return SQLITE_IOERR_WRITE;
    // SQLite leaves these bytes to the file system. Writing them into its own copy of the page, which is not
    // constant, takes them into the journal of the next load.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-const-cast)
    const Page page(static_cast<unsigned char*>(const_cast<void*>(bytes)), pageSize);
    const auto number = static_cast<std::uint64_t>(offset / pageLength + 1);
    if (file.undoing && !MayBePutBack(page, number)) {
      return Fault(file, StorageFault::DamagedJournal, SQLITE_CORRUPT);
    }
    WriteChecksum(page, number);
  }
  return Noted(file, file.file->pMethods->xWrite(file.file, bytes, length, offset));
}

int Truncate(sqlite3_file* handle, sqlite3_int64 size) {
  SealedFile& file = Of(handle);
  return Noted(file, file.file->pMethods->xTruncate(file.file, size));
}

int Sync(sqlite3_file* handle, int flags) {
  SealedFile& file = Of(handle);
  return Noted(file, file.file->pMethods->xSync(file.file, flags));
}

int FileSize(sqlite3_file* handle, sqlite3_int64* size) {
  sqlite3_file* const file = SystemOf(handle);
  return file->pMethods->xFileSize(file, size);
}

int Lock(sqlite3_file* handle, int level) {
  SealedFile& file = Of(handle);
  const int result = file.file->pMethods->xLock(file.file, level);
  if (result == SQLITE_OK) file.locked = true;
  return result;
}

int Unlock(sqlite3_file* handle, int level) {
  SealedFile& file = Of(handle);
  if (level == SQLITE_LOCK_NONE) file.locked = false;
  return file.file->pMethods->xUnlock(file.file, level);
}

int CheckReservedLock(sqlite3_file* handle, int* reserved) {
  sqlite3_file* const file = SystemOf(handle);
  return file->pMethods->xCheckReservedLock(file, reserved);
}

int FileControl(sqlite3_file* handle, int operation, void* argument) {
  sqlite3_file* const file = SystemOf(handle);
  return file->pMethods->xFileControl(file, operation, argument);
}

int SectorSize(sqlite3_file* handle) {
  sqlite3_file* const file = SystemOf(handle);
  return file->pMethods->xSectorSize(file);
}

int DeviceCharacteristics(sqlite3_file* handle) {
  sqlite3_file* const file = SystemOf(handle);
  return file->pMethods->xDeviceCharacteristics(file);
}

// Version 1 has neither shared memory, and so no write-ahead log, nor memory mapping.
constexpr sqlite3_io_methods methods = {1,
                                        Close,
                                        Read,
                                        Write,
                                        Truncate,
                                        Sync,
                                        FileSize,
                                        Lock,
                                        Unlock,
                                        CheckReservedLock,
                                        FileControl,
                                        SectorSize,
                                        DeviceCharacteristics,
                                        nullptr,
                                        nullptr,
                                        nullptr,
                                        nullptr,
                                        nullptr,
                                        nullptr};

}  // namespace

int SealedHandleSize() noexcept {
  return static_cast<int>(sizeof(SealedFileHandle));
}

void OpenHandle(sqlite3_file* handle, SealedFile& file) noexcept {
  auto* const opened = new (handle) SealedFileHandle;
  opened->pMethods = &methods;
  opened->sealed = &file;
}

sqlite3_file* SystemFileOf(sqlite3_file* handle) noexcept {
  auto* const bytes = static_cast<char*>(static_cast<void*>(handle));
  return static_cast<sqlite3_file*>(static_cast<void*>(bytes + sizeof(SealedFileHandle)));
}

int LearnFormat(SealedFile& file) noexcept {
  if (file.formatKnown) return SQLITE_OK;
  sqlite3_int64 size = 0;
  if (const int result = file.file->pMethods->xFileSize(file.file, &size); result != SQLITE_OK) return result;
  DatabaseHeader header{};
  if (size == 0) {
    file.format = PageFormat::Checked;  // as all files are written
  } else if (size >= static_cast<sqlite3_int64>(headerSize)) {
    const int result = file.file->pMethods->xRead(file.file, header.data(), static_cast<int>(headerSize), 0);
    if (result != SQLITE_OK) return result;
    file.format = FormatOf(header);
  }
  if (file.format == PageFormat::WriteAheadLog) {
    return Fault(file, StorageFault::WriteAheadLog, SQLITE_CANTOPEN);
  }
  file.formatKnown = true;
  return SQLITE_OK;
}

int SurveyLockedPages(SealedFile& file, std::int64_t& pages, std::vector<std::int64_t>& damaged) {
  if (const int result = LearnFormat(file); result != SQLITE_OK) return result;
  sqlite3_int64 size = 0;
  if (const int result = file.file->pMethods->xFileSize(file.file, &size); result != SQLITE_OK) return result;
  pages = (size + pageLength - 1) / pageLength;
  if (file.format == PageFormat::Plain) return SQLITE_OK;
  for (std::int64_t number = 1; number <= pages; ++number) {
    if (file.interrupted && file.interrupted()) return SQLITE_INTERRUPT;
    if (number == lockPage) continue;
    const StorageFault fault = file.fault;
    const int result = ReadPage(file, file.page, number);
    if (result == SQLITE_CORRUPT) {
      damaged.push_back(number);
      file.fault = fault;
    } else if (result != SQLITE_OK) {
      return result;
    }
  }
  return SQLITE_OK;
}

}  // namespace krnqb::database
