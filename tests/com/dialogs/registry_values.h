#pragma once

#include <windows.h>

#include <string>

namespace krnqb::testing {

/// Sets a machine-wide registry value that did not exist before; deletes it when destroyed.
class RegistryValue {
 public:
  RegistryValue(const wchar_t* key, const wchar_t* name, const std::wstring& text)
      : RegistryValue(key, name, REG_SZ, text.c_str(), (text.size() + 1) * sizeof(wchar_t)) {}
  RegistryValue(const wchar_t* key, const wchar_t* name, DWORD type, const void* bytes, std::size_t size)
      : key_(key), name_(name) {
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, key_, name_, type, bytes, static_cast<DWORD>(size));
  }
  ~RegistryValue() { RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, key_, name_); }
  RegistryValue(const RegistryValue&) = delete;
  RegistryValue& operator=(const RegistryValue&) = delete;

 private:
  const wchar_t* key_;
  const wchar_t* name_;
};

}  // namespace krnqb::testing
