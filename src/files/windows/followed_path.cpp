#include "files/followed_path.h"

#include <optional>

#include "files/fault.h"
#include "files/windows/handle.h"

namespace krnqb::files {
namespace {

// Removes the prefix by which Windows marks a path that needs no further interpretation, unless the path is
// too long without it.
std::wstring Readable(std::wstring path) {
  constexpr std::wstring_view prefix = LR"(\\?\)";
  constexpr std::wstring_view networkPrefix = LR"(\\?\UNC\)";
  if (path.size() >= MAX_PATH) return path;
  if (path.starts_with(networkPrefix)) return LR"(\\)" + path.substr(networkPrefix.size());
  return path.starts_with(prefix) ? path.substr(prefix.size()) : path;
}

// Returns the path by which the system knows what has been opened, or nothing if the system of that disk has
// none.
std::optional<std::wstring> FinalPath(const WindowsHandle& opened) {
  std::wstring path(MAX_PATH, L'\0');
  // Returns the length that the text needs with its end if there is no room for it.
  for (DWORD length = 0;
       (length = GetFinalPathNameByHandleW(opened.Get(), path.data(), static_cast<DWORD>(path.size()),
                                           VOLUME_NAME_DOS)) != 0;) {
    const bool complete = length < path.size();
    path.resize(length);
    if (complete) return Readable(std::move(path));
  }
  return std::nullopt;
}

bool IsLink(const std::filesystem::path& file) noexcept {
  const DWORD attributes = GetFileAttributesW(file.c_str());
  return attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0;
}

}  // namespace

std::filesystem::path FollowedPlanPath(const std::filesystem::path& plan) {
  const WindowsHandle opened = OpenToAsk(plan);
  if (!opened) throw FileError("cannot open the plan", plan, LastWindowsError());
  if (std::optional<std::wstring> path = FinalPath(opened)) return *std::move(path);
  const std::error_code failure = LastWindowsError();
  if (IsLink(plan)) throw FileError("cannot open the plan", plan, failure);
  return std::filesystem::absolute(plan);
}

}  // namespace krnqb::files
