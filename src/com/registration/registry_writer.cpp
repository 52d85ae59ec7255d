#include "com/registration/registry_writer.h"

#include "com/values/error_mapping.h"
#include "support/windows/registry_key.h"

namespace krnqb::com {
namespace {

void CheckStatus(LSTATUS status) {
  if (status != ERROR_SUCCESS) throw SystemError(static_cast<DWORD>(status));
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
    const auto size = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    Store(hive, key, name, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()), size);
  }

  void Restore(RegistryHive hive, const std::wstring& key, const std::wstring& name,
               const StoredValue& value) override {
    Store(hive, key, name, value.type, reinterpret_cast<const BYTE*>(value.bytes.data()),
          static_cast<DWORD>(value.bytes.size()));
  }

  std::optional<StoredValue> Read(RegistryHive hive, const std::wstring& key,
                                  const std::wstring& name) override {
    RegistryKey opened;
    if (!Open(hive, key, KEY_QUERY_VALUE, opened)) return std::nullopt;
    DWORD type = REG_NONE;
    DWORD size = 0;
    const LSTATUS status = RegQueryValueExW(opened.get(), name.c_str(), nullptr, &type, nullptr, &size);
    if (status == ERROR_FILE_NOT_FOUND) return std::nullopt;
    CheckStatus(status);
    StoredValue value{type, std::vector<std::byte>(size)};
    CheckStatus(RegQueryValueExW(opened.get(), name.c_str(), nullptr, nullptr,
                                 reinterpret_cast<BYTE*>(value.bytes.data()), &size));
    return value;
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

 private:
  static void Store(RegistryHive hive, const std::wstring& key, const std::wstring& name, DWORD type,
                    const BYTE* bytes, DWORD size) {
    RegistryKey opened;
    if (!Open(hive, key, KEY_SET_VALUE, opened)) throw SystemError(ERROR_FILE_NOT_FOUND);
    CheckStatus(RegSetValueExW(opened.get(), name.c_str(), 0, type, bytes, size));
  }
};

}  // namespace

std::unique_ptr<RegistryWriter> SystemRegistryWriter() {
  return std::make_unique<SystemRegistry>();
}

}  // namespace krnqb::com
