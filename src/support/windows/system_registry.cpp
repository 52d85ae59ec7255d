#include "support/system_registry.h"

#include <cstring>

#include "support/windows/registry_key.h"
#include "support/windows_text.h"

namespace krnqb {
namespace {

using Value = std::variant<std::string, std::uint32_t>;

std::optional<Value> ValueOf(DWORD type, const std::wstring& bytes, DWORD size) {
  if (type == REG_SZ) return Utf8(std::wstring_view(bytes).substr(0, size / sizeof(wchar_t)));
  std::uint32_t number = 0;
  if (type != REG_DWORD || size != sizeof(number)) return std::nullopt;
  std::memcpy(&number, bytes.data(), sizeof(number));
  return number;
}

class MachineRegistry final : public Registry {
 public:
  std::optional<Value> Read(RegistryHive hive, std::string_view key, std::string_view name,
                            std::uint32_t rights) override {
    RegistryKey opened;
    if (RegOpenKeyExW(RootOf(hive), Wide(key).c_str(), 0, rights, opened.Receive()) != ERROR_SUCCESS) {
      return std::nullopt;
    }
    const std::wstring valueName = Wide(name);
    DWORD type = REG_NONE;
    DWORD size = 0;
    if (RegQueryValueExW(opened.get(), valueName.c_str(), nullptr, &type, nullptr, &size) != ERROR_SUCCESS) {
      return std::nullopt;
    }
    std::wstring bytes((size + 1) / sizeof(wchar_t), L'\0');
    if (RegQueryValueExW(opened.get(), valueName.c_str(), nullptr, &type,
                         reinterpret_cast<BYTE*>(bytes.data()), &size) != ERROR_SUCCESS) {
      return std::nullopt;
    }
    return ValueOf(type, bytes, size);
  }
};

}  // namespace

std::shared_ptr<Registry> SystemRegistry() {
  return std::make_shared<MachineRegistry>();
}

}  // namespace krnqb
