#include "errors.h"

#include <cstdio>

void Check(HRESULT result, IUnknown* object) {
  if (SUCCEEDED(result)) return;
  IErrorInfo* description = nullptr;
  if (object != nullptr) GetErrorInfo(0, &description);
  throw _com_error(result, description);
}

std::string MessageOf(const _com_error& error) {
  _bstr_t description = error.Description();
  if (description.length() == 0) description = error.ErrorMessage();
  char number[16];
  std::snprintf(number, sizeof number, " (%08lX)", static_cast<unsigned long>(error.Error()));
  return Utf8(description) + number;
}

std::string Utf8(const _bstr_t& text) {
  const wchar_t* wide = text;
  const int length = static_cast<int>(text.length());
  std::string utf8(static_cast<std::size_t>(length) * 3, '\0');
  utf8.resize(static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, wide, length, utf8.data(),
                                                           static_cast<int>(utf8.size()), nullptr, nullptr)));
  return utf8;
}
