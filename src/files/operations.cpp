#include "files/operations.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <memory>

#include "files/fault.h"

namespace krnqb::files {
namespace {

namespace fs = std::filesystem;

constexpr mode_t permissionBits = 07777;

std::error_code Success() noexcept {
  return {};
}
std::error_code SystemError(int number) noexcept {
  return {number, std::generic_category()};
}

FileDescriptor CreateOnly(const fs::path& file, mode_t mode) {
  return FileDescriptor::Open(file, O_RDWR | O_CREAT | O_EXCL | O_NOFOLLOW, mode);
}

// A killed process has lost its lock, so whoever acquires the lock may remove the file.
std::error_code RemoveUnlessClaimed(const fs::path& file) {
  const FileDescriptor present = FileDescriptor::Open(file, O_RDONLY | O_NOFOLLOW | O_NONBLOCK);
  if (present && present.Lock()) return SystemError(EBUSY);
  if (!present && errno == EACCES) return LastSystemError();  // whether it is locked cannot be determined
  return ::unlink(file.c_str()) == 0 || errno == ENOENT ? Success() : LastSystemError();
}

// Between creating and locking a file, another process may have removed it as left behind.
std::error_code CheckStillNamed(const FileDescriptor& file, const fs::path& name) {
  struct stat opened {};
  struct stat named {};
  if (::fstat(file.Number(), &opened) != 0) return LastSystemError();
  if (::lstat(name.c_str(), &named) != 0) return errno == ENOENT ? SystemError(EBUSY) : LastSystemError();
  const bool same = opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
  return same ? Success() : SystemError(EBUSY);
}

std::error_code ClaimNew(const FileDescriptor& created, const fs::path& name) {
  std::error_code failure = created.Lock();
  if (!failure) failure = CheckStillNamed(created, name);
  // A busy file belongs to another process now.
  if (failure && failure != std::errc::device_or_resource_busy) ::unlink(name.c_str());
  return failure;
}

std::error_code CopyContents(const FileDescriptor& from, const FileDescriptor& to,
                             SystemFileOperations& system) {
  std::array<char, 65536> part{};
  for (;;) {
    const ssize_t length = ::read(from.Number(), part.data(), part.size());
    if (length == 0) return Success();
    if (length < 0 && errno == EINTR) continue;
    if (length < 0) return LastSystemError();
    const std::string_view contents(part.data(), static_cast<std::size_t>(length));
    if (const std::error_code failure = system.SystemFileOperations::Write(to, contents)) return failure;
  }
}

std::error_code CopyFile(const fs::path& from, const fs::path& to, SystemFileOperations& system) {
  const FileDescriptor source = FileDescriptor::Open(from, O_RDONLY);
  if (!source) return LastSystemError();
  const FileDescriptor copy = CreateOnly(to, 0600);
  if (!copy) return LastSystemError();
  if (const std::error_code failure = CopyContents(source, copy, system)) return failure;
  if (const std::error_code failure = system.SystemFileOperations::KeepOwnerAndMode(copy, from)) {
    return failure;
  }
  return system.SystemFileOperations::Sync(copy);
}

// The result of read(2) or write(2), with the number of bytes in `length`.
std::error_code PartResult(ssize_t result, std::size_t& length) noexcept {
  length = result < 0 ? 0 : static_cast<std::size_t>(result);
  return result < 0 ? LastSystemError() : Success();
}

std::error_code Opened(FileDescriptor opened, FileDescriptor& file) noexcept {
  if (!opened) return LastSystemError();
  file = std::move(opened);
  return Success();
}

}  // namespace

std::error_code SystemFileOperations::CheckWritable(const fs::path& file) {
  return ::faccessat(AT_FDCWD, file.c_str(), W_OK, AT_EACCESS) == 0 ? Success() : LastSystemError();
}

std::error_code SystemFileOperations::CreateTemporary(const fs::path& temporary, mode_t mode,
                                                      FileDescriptor& file) {
  FileDescriptor created = CreateOnly(temporary, mode);
  if (!created && errno == EEXIST) {
    if (const std::error_code failure = RemoveUnlessClaimed(temporary)) return failure;
    created = CreateOnly(temporary, mode);
  }
  if (!created) return errno == EEXIST ? SystemError(EBUSY) : LastSystemError();
  const std::error_code failure = ClaimNew(created, temporary);
  if (!failure) file = std::move(created);
  return failure;
}

std::error_code SystemFileOperations::KeepOwnerAndMode(const FileDescriptor& file, const fs::path& pattern) {
  struct stat kept {};
  if (::stat(pattern.c_str(), &kept) != 0) return LastSystemError();
  // Only an administrator may change the owner, but the group alone may still be kept. Changing the owner
  // resets some permissions, so they are set last.
  const bool keptOwner = ::fchown(file.Number(), kept.st_uid, kept.st_gid) == 0 ||
                         ::fchown(file.Number(), static_cast<uid_t>(-1), kept.st_gid) == 0;
  static_cast<void>(keptOwner);
  return ::fchmod(file.Number(), kept.st_mode & permissionBits) == 0 ? Success() : LastSystemError();
}

std::error_code SystemFileOperations::Write(const FileDescriptor& file, std::string_view contents) {
  while (!contents.empty()) {
    const ssize_t written = ::write(file.Number(), contents.data(), contents.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return LastSystemError();
    contents.remove_prefix(static_cast<std::size_t>(written));
  }
  return Success();
}

std::error_code SystemFileOperations::Sync(const FileDescriptor& file) {
  return ::fsync(file.Number()) == 0 ? Success() : LastSystemError();
}

std::error_code SystemFileOperations::KeepPrevious(const fs::path& file, const fs::path& backup) {
  const fs::path unfinished = WithSuffix(backup, ".tmp");
  Remove(unfinished);
  std::error_code failure = AddName(file, unfinished);
  if (failure) failure = CopyFile(file, unfinished, *this);
  if (!failure) failure = SystemFileOperations::Rename(unfinished, backup);
  // Also after success: renaming a link over another link to the same file leaves both.
  Remove(unfinished);
  return failure;
}

std::error_code SystemFileOperations::Rename(const fs::path& from, const fs::path& to) {
  return ::rename(from.c_str(), to.c_str()) == 0 ? Success() : LastSystemError();
}

std::error_code SystemFileOperations::RenameToNew(const fs::path& from, const fs::path& to) {
  const std::error_code failure = AddName(from, to);
  if (!failure) Remove(from);
  if (!failure || failure == std::errc::file_exists) return failure;
  // No hard links on this file system: it may still support a rename that replaces nothing.
  const int renamed = ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE);
  return renamed == 0 ? Success() : LastSystemError();
}

std::error_code SystemFileOperations::SyncFolder(const fs::path& folder) {
  const FileDescriptor opened = FileDescriptor::Open(folder, O_RDONLY | O_DIRECTORY);
  if (!opened) return LastSystemError();
  // Some file systems write their entries synchronously and reject the call.
  return ::fsync(opened.Number()) == 0 || errno == EINVAL ? Success() : LastSystemError();
}

std::error_code SystemFileOperations::AddName(const fs::path& file, const fs::path& name) {
  return ::link(file.c_str(), name.c_str()) == 0 ? Success() : LastSystemError();
}

void SystemFileOperations::Remove(const fs::path& file) noexcept {
  ::unlink(file.c_str());
}

std::error_code SystemFileOperations::CreateFolder(const fs::path& folder, mode_t mode) {
  return ::mkdir(folder.c_str(), mode) == 0 ? Success() : LastSystemError();
}

std::error_code SystemFileOperations::ListFolder(const fs::path& folder, std::vector<std::string>& names) {
  FileDescriptor opened = FileDescriptor::Open(folder, O_RDONLY | O_DIRECTORY | O_NOFOLLOW);
  if (!opened) return LastSystemError();
  const std::unique_ptr<DIR, int (*)(DIR*)> entries(::fdopendir(opened.Number()), ::closedir);
  if (entries == nullptr) return LastSystemError();
  opened.Release();
  for (;;) {
    errno = 0;
    const dirent* entry = ::readdir(entries.get());  // NOLINT(concurrency-mt-unsafe): a stream of its own
    if (entry == nullptr) return errno == 0 ? Success() : LastSystemError();
    const std::string_view name(static_cast<const char*>(entry->d_name));
    if (name != "." && name != "..") names.emplace_back(name);
  }
}

void SystemFileOperations::RemoveFolder(const fs::path& folder) noexcept {
  ::rmdir(folder.c_str());
}

std::error_code SystemFileOperations::OpenForReading(const fs::path& file, FileDescriptor& opened) {
  return Opened(FileDescriptor::Open(file, O_RDONLY | O_NONBLOCK | O_NOCTTY), opened);
}

std::error_code SystemFileOperations::Read(const FileDescriptor& file, std::span<char> part,
                                           std::size_t& length) {
  return PartResult(::read(file.Number(), part.data(), part.size()), length);
}

std::error_code SystemFileOperations::Seek(const FileDescriptor& file, std::uint64_t position) {
  const bool done = ::lseek(file.Number(), static_cast<off_t>(position), SEEK_SET) >= 0;
  return done ? std::error_code() : std::error_code(errno, std::generic_category());
}

std::error_code SystemFileOperations::OpenForWriting(const fs::path& file, FileDescriptor& opened) {
  constexpr int flags = O_WRONLY | O_CREAT | O_TRUNC | O_NONBLOCK | O_NOCTTY;
  return Opened(FileDescriptor::Open(file, flags, 0600), opened);
}

std::error_code SystemFileOperations::WritePart(const FileDescriptor& file, std::string_view contents,
                                                std::size_t& length) {
  return PartResult(::write(file.Number(), contents.data(), contents.size()), length);
}

std::error_code SystemFileOperations::Close(FileDescriptor& file) {
  return file.Close();
}

std::error_code SystemFileOperations::OpenLockFile(const fs::path& file, FileDescriptor& opened) {
  constexpr int flags = O_NOFOLLOW | O_NONBLOCK | O_NOCTTY;
  std::error_code failure = Opened(FileDescriptor::Open(file, O_RDWR | O_CREAT | flags, 0666), opened);
  // Locking another user's lock file needs no write permission.
  if (failure == std::errc::permission_denied || failure == std::errc::read_only_file_system) {
    // If the file is missing too, the reason is that it cannot be created.
    if (!Opened(FileDescriptor::Open(file, O_RDONLY | flags), opened)) failure.clear();
  }
  struct stat status {};
  if (!failure && ::fstat(opened.Number(), &status) != 0) failure = LastSystemError();
  if (!failure && !S_ISREG(status.st_mode)) failure = SystemError(EINVAL);
  if (failure) opened = FileDescriptor();
  return failure;
}

}  // namespace krnqb::files
