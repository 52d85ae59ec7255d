#pragma once

#include <windows.h>

#include <string>

namespace krnqb::testing {

/// A value of the machine's registry, for as long as it lives. There was none before.
class RegistryValue {
 public:
  RegistryValue(const wchar_t* valueKey, const wchar_t* valueName, const std::wstring& text)
      : RegistryValue(valueKey, valueName, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(wchar_t)) {}
  RegistryValue(const wchar_t* valueKey, const wchar_t* valueName, DWORD type, const void* bytes,
                std::size_t size)
      : key(valueKey), name(valueName) {
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, key, name, type, bytes, static_cast<DWORD>(size));
  }
  ~RegistryValue() { RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, key, name); }
  RegistryValue(const RegistryValue&) = delete;
  RegistryValue& operator=(const RegistryValue&) = delete;

 private:
  const wchar_t* key;
  const wchar_t* name;
};

}  // namespace krnqb::testing
