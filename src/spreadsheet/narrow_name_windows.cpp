#include <fmt/format.h>
#include <windows.h>

#include <optional>

#include "krnqb/error.h"
#include "spreadsheet/narrow_name.h"
#include "support/path_text.h"

namespace krnqb::spreadsheet {
namespace {

// The name in the system's code page, unless characters would be lost.
std::optional<std::string> InCodePage(const std::wstring& name) {
  const auto length = static_cast<int>(name.size());
  BOOL lost = FALSE;
  // The code page can be UTF-8, which has every character and does not report any as lost.
  BOOL* const reported = GetACP() == CP_UTF8 ? nullptr : &lost;
  const int needed = WideCharToMultiByte(CP_ACP, 0, name.c_str(), length, nullptr, 0, nullptr, reported);
  if (needed <= 0 || lost != FALSE) return std::nullopt;
  std::string narrow(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(CP_ACP, 0, name.c_str(), length, narrow.data(), needed, nullptr, reported);
  // A character may have been replaced by a similar one.
  std::wstring back(name.size() + 1, L'\0');
  const int wide =
      MultiByteToWideChar(CP_ACP, 0, narrow.c_str(), needed, back.data(), static_cast<int>(back.size()));
  if (wide <= 0 || std::wstring_view(back).substr(0, static_cast<std::size_t>(wide)) != name)
    return std::nullopt;
  return narrow;
}

std::wstring ShortName(const std::wstring& name) {
  const DWORD needed = GetShortPathNameW(name.c_str(), nullptr, 0);
  if (needed == 0) return name;
  std::wstring result(needed, L'\0');
  result.resize(GetShortPathNameW(name.c_str(), result.data(), needed));
  return result;
}

}  // namespace

std::string NarrowName(const std::filesystem::path& file) {
  const std::wstring& name = file.native();
  if (const std::optional<std::string> narrow = InCodePage(name)) return *narrow;
  if (const std::optional<std::string> narrow = InCodePage(ShortName(name))) return *narrow;
  throw Error(
      error_number::unspecified,
      fmt::format("cannot write {}: the name has characters that this system cannot use here; write to "
                  "a folder and a file with plain names, then rename the file",
                  TextOfPath(file)));
}

}  // namespace krnqb::spreadsheet
