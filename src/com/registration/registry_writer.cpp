#include "com/registration/registry_writer.h"

#include "com/registration/registry_key.h"
#include "com/values/error_mapping.h"

namespace krnqb::com {
namespace {

void CheckStatus(LSTATUS status) {
  if (status != ERROR_SUCCESS) throw ErrorOf(HRESULT_FROM_WIN32(static_cast<DWORD>(status)));
}

std::wstring PathOf(const std::wstring& key) {
  return L"Software\\Classes\\" + key;
}

// Opens the key; returns false if it does not exist.
bool Open(RegistryHive hive, const std::wstring& key, REGSAM rights, RegistryKey& opened) {
  const LSTATUS status = RegOpenKeyExW(RootOf(hive), PathOf(key).c_str(), 0, rights, opened.Receive());
  if (status == ERROR_FILE_NOT_FOUND) return false;
  CheckStatus(status);
  return true;
}

class SystemRegistry final : public RegistryWriter {
 public:
  void Create(RegistryHive hive, const std::wstring& key) override {
    RegistryKey created;
    CheckStatus(RegCreateKeyExW(RootOf(hive), PathOf(key).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                KEY_WRITE, nullptr, created.Receive(), nullptr));
  }

  void Write(RegistryHive hive, const std::wstring& key, const std::wstring& name,
             const std::wstring& value) override {
    RegistryKey opened;
    if (!Open(hive, key, KEY_SET_VALUE, opened)) throw ErrorOf(HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND));
    const auto bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    CheckStatus(RegSetValueExW(opened.get(), name.c_str(), 0, REG_SZ,
                               reinterpret_cast<const BYTE*>(value.c_str()), bytes));
  }

  bool Has(RegistryHive hive, const std::wstring& key) override {
    RegistryKey opened;
    return Open(hive, key, KEY_READ, opened);
  }

  void RemoveValue(RegistryHive hive, const std::wstring& key, const std::wstring& name) override {
    RegistryKey opened;
    if (!Open(hive, key, KEY_SET_VALUE, opened)) return;
    const LSTATUS status = RegDeleteValueW(opened.get(), name.c_str());
    if (status != ERROR_FILE_NOT_FOUND) CheckStatus(status);
  }

  void RemoveEmptyKey(RegistryHive hive, const std::wstring& key) override {
    {
      RegistryKey opened;
      if (!Open(hive, key, KEY_READ, opened)) return;
      DWORD keys = 0;
      DWORD values = 0;
      CheckStatus(RegQueryInfoKeyW(opened.get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values,
                                   nullptr, nullptr, nullptr, nullptr));
      if (keys != 0 || values != 0) return;
    }
    CheckStatus(RegDeleteKeyW(RootOf(hive), PathOf(key).c_str()));
  }
};

}  // namespace

std::unique_ptr<RegistryWriter> SystemRegistryWriter() {
  return std::make_unique<SystemRegistry>();
}

}  // namespace krnqb::com
