#include "setup/search_path.h"

#include <windows.h>

#include "krnqb/error.h"

namespace krnqb::setup {
namespace {

constexpr wchar_t separator = L';';

std::wstring_view WithoutBackslash(std::wstring_view folder) {
  if (folder.ends_with(L'\\')) folder.remove_suffix(1);
  return folder;
}

bool IsSameFolder(std::wstring_view first, std::wstring_view second) {
  first = WithoutBackslash(first);
  second = WithoutBackslash(second);
  return CompareStringOrdinal(first.data(), static_cast<int>(first.size()), second.data(),
                              static_cast<int>(second.size()), TRUE) == CSTR_EQUAL;
}

struct Entry {
  std::size_t start;
  std::size_t size;
};

// Returns the last entry that is the folder.
std::optional<Entry> Find(std::wstring_view path, std::wstring_view folder) {
  std::optional<Entry> found;
  for (std::size_t start = 0; start <= path.size();) {
    const std::size_t end = std::min(path.find(separator, start), path.size());
    if (IsSameFolder(path.substr(start, end - start), folder)) found = Entry{start, end - start};
    start = end + 1;
  }
  return found;
}

}  // namespace

bool AddFolder(ProgramPath& path, std::wstring_view folder) {
  if (folder.find(separator) != std::wstring_view::npos) {
    throw Error(ERROR_INVALID_NAME, "a folder whose name contains a semicolon cannot be on the search path");
  }
  if (!path) {
    path = folder;
    return true;
  }
  if (Find(*path, folder)) return false;
  if (path->size() + 1 + folder.size() > longestPath) {
    throw Error(ERROR_BUFFER_OVERFLOW, "the search path is too long for another folder");
  }
  // A separator even after an empty path or one that ends with a separator: so the removal knows what was
  // added.
  *path += separator;
  *path += folder;
  return true;
}

bool RemoveFolder(ProgramPath& path, std::wstring_view folder) {
  if (!path) return false;
  const std::optional<Entry> entry = Find(*path, folder);
  if (!entry) return false;
  if (entry->start > 0) {
    path->erase(entry->start - 1, entry->size + 1);
  } else if (entry->size < path->size()) {
    path->erase(0, entry->size + 1);
  } else {
    path.reset();
  }
  return true;
}

}  // namespace krnqb::setup
