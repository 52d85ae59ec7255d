#include "com/text.h"

#include "krnqb/error.h"

namespace krnqb::com {

std::string Utf8(std::wstring_view text) {
  if (text.empty()) return {};
  const int length = static_cast<int>(text.size());
  const int needed = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
  std::string converted(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), length, converted.data(), needed, nullptr, nullptr);
  return converted;
}

std::wstring Wide(std::string_view text) {
  if (text.empty()) return {};
  const int length = static_cast<int>(text.size());
  const int needed = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
  std::wstring converted(static_cast<std::size_t>(needed), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), length, converted.data(), needed);
  return converted;
}

std::wstring_view TextOf(BSTR text) noexcept {
  return text == nullptr ? std::wstring_view() : std::wstring_view(text, SysStringLen(text));
}

Bstr::Bstr(std::wstring_view text) : value(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {
  if (value == nullptr) throw Error(error_number::outOfMemory);
}

}  // namespace krnqb::com
