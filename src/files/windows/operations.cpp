#include "files/operations.h"

#include <aclapi.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "files/fault.h"
#include "files/status.h"
#include "files/windows/handle.h"
#include "support/path_text.h"
#include "support/windows_error.h"
#include "support/windows_text.h"

namespace krnqb::files {
namespace {

namespace fs = std::filesystem;

constexpr DWORD readAndWrite = GENERIC_READ | GENERIC_WRITE;
constexpr std::size_t mostBytesAtOnce = std::size_t{1} << 20U;

std::error_code Success() noexcept {
  return {};
}
std::error_code SystemError(int number) noexcept {
  return {number, std::generic_category()};
}
std::error_code ResultOf(BOOL done) noexcept {
  return done != FALSE ? Success() : LastWindowsError();
}

std::error_code Opened(FileDescriptor opened, FileDescriptor& file) noexcept {
  if (!opened) return LastSystemError();
  file = std::move(opened);
  return Success();
}

// With the right to change its permissions.
FileDescriptor CreateOnly(const fs::path& file) noexcept {
  return OpenShared(file, readAndWrite | WRITE_DAC, CREATE_NEW);
}

// A killed process has lost its lock, so whoever acquires the lock may remove the file.
std::error_code RemoveUnlessClaimed(const fs::path& file) noexcept {
  FileDescriptor present = OpenShared(file, GENERIC_READ, OPEN_EXISTING);
  if (present && present.Lock()) return SystemError(EBUSY);
  if (!present && errno != ENOENT) return LastSystemError();
  const BOOL removed = DeleteFileW(file.c_str());
  return removed != FALSE || GetLastError() == ERROR_FILE_NOT_FOUND ? Success() : LastWindowsError();
}

// Between creating and locking a file, another process may have removed it as left behind.
std::error_code ClaimNew(const FileDescriptor& created, const fs::path& name) noexcept {
  std::error_code failure = created.Lock();
  FileStatus opened;
  FileStatus named;
  if (!failure) failure = StatusOf(created.Number(), opened);
  if (!failure && (StatusOf(name, named) || named.stamp.number != opened.stamp.number)) {
    failure = SystemError(EBUSY);
  }
  // A busy file belongs to another process now.
  if (failure && failure != std::errc::device_or_resource_busy) DeleteFileW(name.c_str());
  return failure;
}

// What has been allocated by the system for a caller to free.
class SystemMemory {
 public:
  SystemMemory() = default;
  SystemMemory(const SystemMemory&) = delete;
  SystemMemory& operator=(const SystemMemory&) = delete;
  ~SystemMemory() { LocalFree(memory_); }
  PSECURITY_DESCRIPTOR* Receive() noexcept { return &memory_; }
  PSECURITY_DESCRIPTOR Get() const noexcept { return memory_; }

 private:
  PSECURITY_DESCRIPTOR memory_ = nullptr;
};

// The search for the entries of a folder.
class FolderSearch {
 public:
  explicit FolderSearch(HANDLE search) noexcept : search_(search) {}
  FolderSearch(const FolderSearch&) = delete;
  FolderSearch& operator=(const FolderSearch&) = delete;
  ~FolderSearch() {
    if (*this) FindClose(search_);
  }
  explicit operator bool() const noexcept { return search_ != INVALID_HANDLE_VALUE; }
  HANDLE Get() const noexcept { return search_; }

 private:
  HANDLE search_;
};

// Disks without permissions have none to keep.
std::error_code PermissionResult(DWORD error) noexcept {
  const bool unsupported =
      error == ERROR_SUCCESS || error == ERROR_INVALID_FUNCTION || error == ERROR_NOT_SUPPORTED;
  return unsupported ? Success() : SystemError(ErrnoOfWindowsError(error));
}

// Whether another program has a file open so that it cannot be renamed, replaced or removed.
bool IsHeldOpen(const fs::path& file) noexcept {
  return !OpenShared(file, DELETE, OPEN_EXISTING) && errno == ETXTBSY;
}

// A file that may be removed is not replaced only because a program has it open.
bool MayBeRemoved(const fs::path& file) noexcept {
  return static_cast<bool>(OpenShared(file, DELETE, OPEN_EXISTING));
}

// Returns whether a condition becomes true within two seconds: virus scanners and indexers hold a file open
// for a moment.
template <typename Condition>
bool BecomesTrue(const Condition& condition) {
  constexpr int mostTries = 20;
  constexpr DWORD pauseMilliseconds = 100;
  for (int tries = 1; !condition(); ++tries) {
    if (tries == mostTries) return false;
    Sleep(pauseMilliseconds);
  }
  return true;
}

std::error_code Move(const fs::path& from, const fs::path& to, DWORD flags) noexcept {
  return ResultOf(MoveFileExW(from.c_str(), to.c_str(), flags | MOVEFILE_WRITE_THROUGH));
}

std::error_code CopyFlushed(const fs::path& from, const fs::path& to) noexcept {
  if (CopyFileW(from.c_str(), to.c_str(), TRUE) == FALSE) return LastWindowsError();
  const FileDescriptor copy = OpenShared(to, GENERIC_WRITE, OPEN_EXISTING);
  return copy ? ResultOf(FlushFileBuffers(HandleOf(copy))) : LastSystemError();
}

bool IsConsole(HANDLE handle) noexcept {
  DWORD mode = 0;
  return GetConsoleMode(handle, &mode) != FALSE;
}

// In UTF-16, so that the console's code page does not matter.
std::error_code WriteToConsole(HANDLE console, std::string_view contents) {
  std::wstring text = Wide(contents);
  for (std::wstring_view left = text; !left.empty();) {
    DWORD written = 0;
    constexpr std::size_t most = 8192;
    const auto part = static_cast<DWORD>(std::min(left.size(), most));
    if (WriteConsoleW(console, left.data(), part, &written, nullptr) == FALSE) return LastWindowsError();
    left.remove_prefix(written);
  }
  return Success();
}

}  // namespace

std::error_code SystemFileOperations::CheckWritable(const fs::path& file) {
  const FileDescriptor opened = OpenShared(file, GENERIC_WRITE, OPEN_EXISTING);
  // Replacing a file that another program has open is tried later, and more than once.
  return opened || errno == ETXTBSY ? Success() : LastSystemError();
}

std::error_code SystemFileOperations::CreateTemporary(const fs::path& temporary, mode_t /*mode*/,
                                                      FileDescriptor& file) {
  FileDescriptor created = CreateOnly(temporary);
  if (!created && errno == EEXIST) {
    if (const std::error_code failure = RemoveUnlessClaimed(temporary)) return failure;
    created = CreateOnly(temporary);
  }
  if (!created) return errno == EEXIST ? SystemError(EBUSY) : LastSystemError();
  const std::error_code failure = ClaimNew(created, temporary);
  if (!failure) file = std::move(created);
  return failure;
}

std::error_code SystemFileOperations::KeepOwnerAndMode(const FileDescriptor& file, const fs::path& pattern) {
  PACL permissions = nullptr;
  SystemMemory descriptor;
  std::wstring name = pattern.native();
  const DWORD read = GetNamedSecurityInfoW(name.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                           nullptr, &permissions, nullptr, descriptor.Receive());
  if (read != ERROR_SUCCESS) return PermissionResult(read);
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  GetSecurityDescriptorControl(descriptor.Get(), &control, &revision);
  // Whether the file also has the permissions of its folder.
  const DWORD inheritance = (control & SE_DACL_PROTECTED) != 0 ? PROTECTED_DACL_SECURITY_INFORMATION
                                                               : UNPROTECTED_DACL_SECURITY_INFORMATION;
  return PermissionResult(SetSecurityInfo(HandleOf(file), SE_FILE_OBJECT,
                                          DACL_SECURITY_INFORMATION | inheritance, nullptr, nullptr,
                                          permissions, nullptr));
}

std::error_code SystemFileOperations::Write(const FileDescriptor& file, std::string_view contents) {
  while (!contents.empty()) {
    std::size_t length = 0;
    if (const std::error_code failure = SystemFileOperations::WritePart(file, contents, length)) {
      return failure;
    }
    contents.remove_prefix(length);
  }
  return Success();
}

std::error_code SystemFileOperations::Sync(const FileDescriptor& file) {
  return ResultOf(FlushFileBuffers(HandleOf(file)));
}

std::error_code SystemFileOperations::KeepPrevious(const fs::path& file, const fs::path& backup) {
  // A second name of a file that is held open can be neither renamed nor removed.
  if (!BecomesTrue([&] { return !IsHeldOpen(file); })) return SystemError(ETXTBSY);
  const fs::path unfinished = WithSuffix(backup, ".tmp");
  Remove(unfinished);
  std::error_code failure = AddName(file, unfinished);
  if (failure) failure = CopyFlushed(file, unfinished);
  if (!failure) failure = SystemFileOperations::Rename(unfinished, backup);
  Remove(unfinished);
  return failure;
}

std::error_code SystemFileOperations::Rename(const fs::path& from, const fs::path& to) {
  std::error_code failure;
  const auto moved = [&] {
    failure = Move(from, to, MOVEFILE_REPLACE_EXISTING);
    const bool refused = failure == std::errc::permission_denied || failure == std::errc::text_file_busy;
    return !refused || !(IsHeldOpen(to) || MayBeRemoved(to));
  };
  return BecomesTrue(moved) ? failure : SystemError(ETXTBSY);
}

std::error_code SystemFileOperations::RenameToNew(const fs::path& from, const fs::path& to) {
  return Move(from, to, 0);
}

// Renaming has written the folder's entries already.
std::error_code SystemFileOperations::SyncFolder(const fs::path& /*folder*/) {
  return Success();
}

std::error_code SystemFileOperations::AddName(const fs::path& file, const fs::path& name) {
  return ResultOf(CreateHardLinkW(name.c_str(), file.c_str(), nullptr));
}

void SystemFileOperations::Remove(const fs::path& file) noexcept {
  DeleteFileW(file.c_str());
}

std::error_code SystemFileOperations::CreateFolder(const fs::path& folder, mode_t /*mode*/) {
  return ResultOf(CreateDirectoryW(folder.c_str(), nullptr));
}

std::error_code SystemFileOperations::ListFolder(const fs::path& folder, std::vector<std::string>& names) {
  const DWORD attributes = GetFileAttributesW(folder.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES) return LastWindowsError();
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) == 0) return SystemError(ENOTDIR);
  if ((attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) return SystemError(ELOOP);
  WIN32_FIND_DATAW entry{};
  const FolderSearch search(FindFirstFileW((folder / L"*").c_str(), &entry));
  if (!search) return LastWindowsError();
  do {
    const std::wstring_view name = entry.cFileName;
    if (name != L"." && name != L"..") names.push_back(Utf8(name));
  } while (FindNextFileW(search.Get(), &entry) != FALSE);
  return GetLastError() == ERROR_NO_MORE_FILES ? Success() : LastWindowsError();
}

void SystemFileOperations::RemoveFolder(const fs::path& folder) noexcept {
  RemoveDirectoryW(folder.c_str());
}

std::error_code SystemFileOperations::OpenForReading(const fs::path& file, FileDescriptor& opened) {
  return Opened(OpenShared(file, GENERIC_READ, OPEN_EXISTING), opened);
}

std::error_code SystemFileOperations::Read(const FileDescriptor& file, std::span<char> part,
                                           std::size_t& length) {
  DWORD read = 0;
  const auto wanted = static_cast<DWORD>(std::min(part.size(), mostBytesAtOnce));
  const std::error_code failure = ResultOf(ReadFile(HandleOf(file), part.data(), wanted, &read, nullptr));
  length = read;
  // The program at the other end of a pipe has written everything.
  return failure == std::errc::broken_pipe ? Success() : failure;
}

std::error_code SystemFileOperations::Seek(const FileDescriptor& file, std::uint64_t position) {
  LARGE_INTEGER target{};
  target.QuadPart = static_cast<LONGLONG>(position);
  return ResultOf(SetFilePointerEx(HandleOf(file), target, nullptr, FILE_BEGIN));
}

std::error_code SystemFileOperations::OpenForWriting(const fs::path& file, FileDescriptor& opened) {
  return Opened(OpenShared(file, GENERIC_WRITE, CREATE_ALWAYS), opened);
}

std::error_code SystemFileOperations::WritePart(const FileDescriptor& file, std::string_view contents,
                                                std::size_t& length) {
  length = 0;
  const HANDLE handle = HandleOf(file);
  if (IsConsole(handle)) {
    const std::error_code failure = WriteToConsole(handle, contents);
    if (!failure) length = contents.size();
    return failure;
  }
  DWORD written = 0;
  const auto part = static_cast<DWORD>(std::min(contents.size(), mostBytesAtOnce));
  const std::error_code failure = ResultOf(WriteFile(handle, contents.data(), part, &written, nullptr));
  length = written;
  return failure;
}

std::error_code SystemFileOperations::Close(FileDescriptor& file) {
  return file.Close();
}

std::error_code SystemFileOperations::OpenLockFile(const fs::path& file, FileDescriptor& opened) {
  const DWORD attributes = GetFileAttributesW(file.c_str());
  if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0) {
    return SystemError(ELOOP);
  }
  std::error_code failure = Opened(OpenShared(file, readAndWrite, OPEN_ALWAYS), opened);
  // Locking another user's lock file needs no write permission.
  if (failure == std::errc::permission_denied || failure == std::errc::read_only_file_system) {
    // If the file is missing too, the reason is that it cannot be created.
    if (!Opened(OpenShared(file, GENERIC_READ, OPEN_EXISTING), opened)) failure.clear();
  }
  FileStatus status;
  if (failure == std::errc::is_a_directory) failure = SystemError(EINVAL);
  if (!failure) failure = StatusOf(opened.Number(), status);
  if (!failure && status.type != FileType::Regular) failure = SystemError(EINVAL);
  if (failure) opened = FileDescriptor();
  return failure;
}

}  // namespace krnqb::files
