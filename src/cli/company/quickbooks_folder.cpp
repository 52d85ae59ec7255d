#include "cli/company/quickbooks_folder.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <filesystem>
#include <sstream>

#include "cli/console/attempt.h"
#include "cli/system/environment.h"
#include "component/company_list.h"
#include "files/input_file.h"
#include "support/path_text.h"
#include "support/system_registry.h"

namespace krnqb::cli {
namespace {

constexpr const char* folderVariable = "KRNQB_QUICKBOOKS_FOLDER";
constexpr const char* folderItem = "quickbooks-folder";
constexpr std::string_view listingFailed = "listing companies failed";

// Treats an empty variable as unset.
std::optional<std::string> Variable(const std::string& name, const Surroundings& surroundings) {
  auto value = surroundings.environment ? surroundings.environment(name) : EnvironmentVariable(name);
  return value && value->empty() ? std::nullopt : value;
}

// Returns the file's text, or nothing if there is no such file.
std::optional<std::string> ConfigurationText(const std::filesystem::path& file) {
  constexpr std::uint64_t limit = std::uint64_t{64} * 1024;
  std::error_code failure;
  const std::filesystem::file_status status = std::filesystem::status(file, failure);
  if (status.type() == std::filesystem::file_type::not_found) return std::nullopt;
  return Attempt(listingFailed, "make it a text file of your own, or give --quickbooks-folder DIR", [&] {
    files::SystemFileOperations operations;
    return files::InputFile(file, {}, operations).ReadAll(limit);
  });
}

std::optional<std::string> ConfiguredFolder(const std::filesystem::path& file) {
  const auto text = ConfigurationText(file);
  if (!text) return std::nullopt;
  std::istringstream lines(*text);
  try {
    for (const CLI::ConfigItem& item : CLI::ConfigINI().from_config(lines)) {
      if (item.fullname() == folderItem && !item.inputs.empty() && !item.inputs.front().empty()) {
        return item.inputs.front();
      }
    }
  } catch (const CLI::Error& error) {
    throw CommandFailure(listingFailed, fmt::format("{}: {}", TextOfPath(file), error.what()),
                         "fix the file");
  }
  return std::nullopt;
}

std::optional<std::string> NamedFolder(const std::optional<std::string>& typed,
                                       const Surroundings& surroundings) {
  if (typed) return typed;
  if (auto folder = Variable(folderVariable, surroundings)) return folder;
  const SettingsFolder settings = FolderOfSettings();
  const auto folder = Variable(settings.variable, surroundings);
  if (!folder) return std::nullopt;
  return ConfiguredFolder(PathFrom(*folder) / PathFrom(settings.below) / "krnqb" / "config.ini");
}

// Returns what the installation of QuickBooks has left in the registry of a system that has one.
std::optional<std::string> RegisteredFolder() {
  OutsideWorld world;
  world.registry = SystemRegistry();
  if (!world.registry) return std::nullopt;
  try {
    return FindQuickBooksFolder(world).path;
  } catch (const Error&) {
    return std::nullopt;
  }
}

}  // namespace

std::string QuickBooksFolderPath(const std::optional<std::string>& typed, const Surroundings& surroundings) {
  auto folder = NamedFolder(typed, surroundings);
  if (!folder) folder = RegisteredFolder();
  if (!folder) {
    throw CommandFailure(listingFailed, "the folder of the QuickBooks program is unknown",
                         fmt::format("give --quickbooks-folder DIR, set {}, or add {} = DIR to "
                                     "{}/krnqb/config.ini",
                                     folderVariable, folderItem, FolderOfSettings().spoken));
  }
  return TextOfPath(std::filesystem::absolute(PathFrom(*folder)).lexically_normal());
}

}  // namespace krnqb::cli
