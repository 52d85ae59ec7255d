#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace krnqb::testing {

inline std::string Utf8(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  std::string result(text.size() * 3, '\0');
  const int used = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, result.data(),
                                       static_cast<int>(result.size()), nullptr, nullptr);
  result.resize(static_cast<std::size_t>(used));
  return result;
}

inline std::string Utf8(BSTR text) {
  return text == nullptr ? std::string() : Utf8(std::wstring_view(text, SysStringLen(text)));
}

inline std::wstring Utf16(std::string_view text) {
  const int length = static_cast<int>(text.size());
  std::wstring result(text.size(), L'\0');
  const int used = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, result.data(), length);
  result.resize(static_cast<std::size_t>(used));
  return result;
}

/// Returns a new BSTR, which the caller must free.
inline BSTR NewText(std::wstring_view text) {
  return SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
}
inline BSTR NewText(std::string_view text) {
  return NewText(std::wstring_view(Utf16(text)));
}

}  // namespace krnqb::testing
