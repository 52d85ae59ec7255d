#include "component/helper.h"

#include <fmt/format.h>

namespace krnqb {
namespace {

constexpr std::size_t keyValueSize = 1024;

std::string WithoutFinalNul(std::string text) {
  if (text.ends_with('\0')) text.pop_back();
  return text;
}

}  // namespace

Variant RegistryValue(Registry* registry, RegistryHive hive, std::string_view key, std::string_view name,
                      std::uint32_t rights) {
  const auto value = registry == nullptr ? std::nullopt : registry->Read(hive, key, name, rights);
  if (!value) return std::string();
  // Unsigned in the registry, signed in a Variant: the bits stay the same.
  if (const auto* number = std::get_if<std::uint32_t>(&*value)) return static_cast<std::int32_t>(*number);
  return WithoutFinalNul(std::get<std::string>(*value));
}

std::optional<std::string> GetKeyValue(Registry* registry, RegistryHive hive, std::string_view key,
                                       std::string_view name) {
  const auto value =
      registry == nullptr ? std::nullopt : registry->Read(hive, key, name, registry_rights::read);
  if (!value) return std::nullopt;
  if (const auto* number = std::get_if<std::uint32_t>(&*value)) return fmt::format("&h{:08X}", *number);
  std::string text = WithoutFinalNul(std::get<std::string>(*value));
  if (text.size() >= keyValueSize) return std::nullopt;
  return text;
}

}  // namespace krnqb
