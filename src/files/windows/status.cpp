#include "files/status.h"

#include "files/fault.h"
#include "files/windows/handle.h"
#include "support/windows_text.h"

namespace krnqb::files {
namespace {

constexpr std::uint64_t Joined(DWORD high, DWORD low) noexcept {
  return std::uint64_t{high} << 32U | low;
}

FileType TypeOf(HANDLE handle) noexcept {
  switch (GetFileType(handle) & ~static_cast<DWORD>(FILE_TYPE_REMOTE)) {
    case FILE_TYPE_CHAR:
      return FileType::CharacterDevice;
    case FILE_TYPE_PIPE:
      return FileType::Pipe;
    case FILE_TYPE_DISK:
      return FileType::Regular;
    default:
      return FileType::Other;
  }
}

std::error_code StatusOf(HANDLE handle, FileStatus& status) noexcept {
  if (handle == INVALID_HANDLE_VALUE) return std::make_error_code(std::errc::bad_file_descriptor);
  status.type = TypeOf(handle);
  // What is not on a disk has no number.
  if (status.type != FileType::Regular) return {};
  BY_HANDLE_FILE_INFORMATION found{};
  if (GetFileInformationByHandle(handle, &found) == FALSE) return LastWindowsError();
  if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0) status.type = FileType::Folder;
  constexpr std::uint64_t ticksPerSecond = 10'000'000;
  constexpr std::uint64_t nanosecondsPerTick = 100;
  constexpr std::int64_t secondsBefore1970 = 11'644'473'600;  // the system counts from 1601
  const std::uint64_t ticks =
      Joined(found.ftLastWriteTime.dwHighDateTime, found.ftLastWriteTime.dwLowDateTime);
  status.stamp = {.device = found.dwVolumeSerialNumber,
                  .number = Joined(found.nFileIndexHigh, found.nFileIndexLow),
                  .size = static_cast<std::int64_t>(Joined(found.nFileSizeHigh, found.nFileSizeLow)),
                  .seconds = static_cast<std::int64_t>(ticks / ticksPerSecond) - secondsBefore1970,
                  .nanoseconds = static_cast<std::int64_t>(ticks % ticksPerSecond * nanosecondsPerTick)};
  return {};
}

}  // namespace

std::error_code StatusOf(const std::filesystem::path& file, FileStatus& status) noexcept {
  const WindowsHandle opened = OpenToAsk(file);
  if (!opened) return LastWindowsError();
  return StatusOf(opened.Get(), status);
}

std::error_code StatusOf(int descriptor, FileStatus& status) noexcept {
  return StatusOf(HandleOf(descriptor), status);
}

std::optional<FileStamp> StampOf(const std::filesystem::path& file) noexcept {
  FileStatus status;
  return StatusOf(file, status) ? std::nullopt : std::optional(status.stamp);
}

// Names differ in more than the case of their letters.
std::string ComparedName(const std::filesystem::path& file) {
  std::wstring name = file.filename().native();
  CharUpperBuffW(name.data(), static_cast<DWORD>(name.size()));
  return Utf8(name);
}

}  // namespace krnqb::files
