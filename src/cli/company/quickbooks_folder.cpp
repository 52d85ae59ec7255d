#include "cli/company/quickbooks_folder.h"

#include <fmt/format.h>

#include <CLI/CLI.hpp>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "cli/console/failure.h"

namespace krnqb::cli {
namespace {

constexpr const char* folderVariable = "KRNQB_QUICKBOOKS_FOLDER";
constexpr const char* folderItem = "quickbooks-folder";
constexpr std::string_view listingFailed = "listing companies failed";

std::optional<std::string> ProcessEnvironment(const std::string& name) {
  const char* value = std::getenv(name.c_str());  // NOLINT(concurrency-mt-unsafe): there is one thread
  return value == nullptr ? std::nullopt : std::optional<std::string>(value);
}

// Treats an empty variable as unset.
std::optional<std::string> Variable(const std::string& name, const Surroundings& surroundings) {
  auto value = surroundings.environment ? surroundings.environment(name) : ProcessEnvironment(name);
  return value && value->empty() ? std::nullopt : value;
}

std::optional<std::string> ConfiguredFolder(const std::filesystem::path& file) {
  std::ifstream lines(file);
  if (!lines) return std::nullopt;
  try {
    for (const CLI::ConfigItem& item : CLI::ConfigINI().from_config(lines)) {
      if (item.fullname() == folderItem && !item.inputs.empty() && !item.inputs.front().empty()) {
        return item.inputs.front();
      }
    }
  } catch (const CLI::Error& error) {
    throw CommandFailure(listingFailed, fmt::format("{}: {}", file.string(), error.what()), "fix the file");
  }
  return std::nullopt;
}

std::optional<std::string> NamedFolder(const std::optional<std::string>& typed,
                                       const Surroundings& surroundings) {
  if (typed) return typed;
  if (auto folder = Variable(folderVariable, surroundings)) return folder;
  const auto home = Variable("HOME", surroundings);
  if (!home) return std::nullopt;
  return ConfiguredFolder(std::filesystem::path(*home) / ".config" / "krnqb" / "config.ini");
}

}  // namespace

std::string QuickBooksFolderPath(const std::optional<std::string>& typed, const Surroundings& surroundings) {
  const auto folder = NamedFolder(typed, surroundings);
  if (!folder) {
    throw CommandFailure(listingFailed, "the folder of the QuickBooks program is unknown",
                         fmt::format("give --quickbooks-folder DIR, set {}, or add {} = DIR to "
                                     "~/.config/krnqb/config.ini",
                                     folderVariable, folderItem));
  }
  return std::filesystem::absolute(*folder).lexically_normal().string();
}

}  // namespace krnqb::cli
