#include "ui/win32/open_file.h"

#include <commdlg.h>

#include "krnqb/error.h"
#include "support/windows_text.h"

namespace krnqb::ui::win32 {
namespace {

constexpr std::size_t longestPath = 32768;  // including the terminating NUL

// Each description and each pattern is NUL-terminated, and so is the list.
std::wstring FilterList(const FileDialogSettings& settings) {
  std::wstring list;
  for (const FileFilter& filter : settings.filters) {
    list += Wide(filter.description) + L'\0';
    list += Wide(filter.pattern) + L'\0';
  }
  return list + L'\0';
}

}  // namespace

std::optional<std::string> OpenFile(const FileDialogSettings& settings, HWND owner) {
  const std::wstring title = Wide(settings.title);
  const std::wstring extension = Wide(settings.defaultExtension);
  const std::wstring filters = FilterList(settings);
  std::wstring path = Wide(settings.initialFileName);
  path.resize(longestPath);

  OPENFILENAMEW request{};
  request.lStructSize = sizeof(request);
  request.hwndOwner = owner;
  request.lpstrFilter = filters.c_str();
  request.nFilterIndex = static_cast<DWORD>(settings.filterIndex);
  request.lpstrFile = path.data();
  request.nMaxFile = static_cast<DWORD>(path.size());
  request.lpstrTitle = title.c_str();
  request.lpstrDefExt = extension.c_str();
  request.Flags = OFN_EXPLORER | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  if (GetOpenFileNameW(&request) != FALSE) return Utf8(path.c_str());
  if (CommDlgExtendedError() != 0) throw Error(error_number::cannotCreateObject);
  return std::nullopt;
}

}  // namespace krnqb::ui::win32
