#include "ui/system_information.h"

#include "component/helper.h"

namespace krnqb::ui {
namespace {

constexpr std::string_view toolKey = R"(SOFTWARE\Microsoft\Shared Tools\MSINFO)";
constexpr std::string_view toolPathValue = "PATH";
constexpr std::string_view folderKey = R"(SOFTWARE\Microsoft\Shared Tools Location)";
constexpr std::string_view folderValue = "MSINFO";
constexpr std::string_view toolName = R"(\MSINFO32.EXE)";

}  // namespace

std::optional<std::string> FindSystemInformationTool(const SystemInformation& system) {
  Registry* registry = system.registry.get();
  if (auto path = GetKeyValue(registry, RegistryHive::LocalMachine, toolKey, toolPathValue)) return path;
  const auto folder = GetKeyValue(registry, RegistryHive::LocalMachine, folderKey, folderValue);
  if (!folder) return std::nullopt;
  std::string path = *folder + std::string(toolName);
  if (!system.files->FileExists(path)) return std::nullopt;
  return path;
}

bool StartSysInfo(const SystemInformation& system) {
  const std::optional<std::string> tool = FindSystemInformationTool(system);
  if (!tool) return false;
  try {
    system.programs->Start(*tool);
    return true;
  } catch (const Error&) {
    return false;
  }
}

}  // namespace krnqb::ui
