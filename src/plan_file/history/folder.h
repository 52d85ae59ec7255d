#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/operations.h"
#include "plan_file/history/entry.h"

namespace krnqb::plan_file {

/// Returns the folder of a plan's history, PLAN.history beside the plan. `plan` is not a symbolic link.
std::filesystem::path HistoryFolderOf(const std::filesystem::path& plan);

/// Returns whether the path is that of a version in a history.
bool IsKeptVersion(const std::filesystem::path& file);

/// What a history is opened for.
enum class HistoryUse : std::uint8_t {
  Reading,
  Writing  ///< errors say that the plan is unchanged
};

/// The folder of a plan's history. Version N, a copy of the plan, is in the file N.kpf, its description in
/// N.json, with N in at least four digits. Other files are left alone.
class HistoryFolder {
 public:
  /// Lists the folder of a plan. A missing folder is like an empty one. Throws Error, with what to do, if it
  /// cannot be read, or is a file or a symbolic link. `operations` must outlive the object.
  HistoryFolder(const std::filesystem::path& plan, HistoryUse use, files::FileOperations& operations);

  const std::filesystem::path& Path() const noexcept { return path_; }
  /// Returns the numbers of which there is a version or a description, in increasing order.
  const std::vector<std::int32_t>& Numbers() const noexcept { return numbers_; }
  bool Has(std::int32_t number) const noexcept;
  /// Returns the names of the files that are not part of the history, in order.
  const std::vector<std::string>& ForeignNames() const noexcept { return foreignNames_; }

  std::filesystem::path VersionFile(std::int32_t number) const;
  std::filesystem::path DescriptionFile(std::int32_t number) const;

  /// Reads the description of a version. Throws Error, with the file and what to do, if it is missing or
  /// damaged.
  HistoryEntry Describe(std::int32_t number) const;
  /// Reads a version, whatever its description says. Throws Error if that fails.
  std::string Version(std::int32_t number) const;
  /// Reads a version. Throws Error, with the file and what to do, if it is not the one that the entry
  /// describes.
  std::string Version(const HistoryEntry& entry) const;

  /// Creates the folder if it is missing, and writes a version with its description, flushed to the disk.
  /// They belong to the plan's owner, as far as the system allows, and nobody else can read them. Throws
  /// Error, with what to do, if a step fails; nothing of the entry is left then.
  void Add(const HistoryEntry& entry, std::string_view version);

  /// Removes a version and its description as far as possible, and the folder if nothing else is in it.
  /// `version` and `description` are their files.
  void Remove(const std::filesystem::path& version, const std::filesystem::path& description) noexcept;

 private:
  void Create();
  void Write(const std::filesystem::path& file, std::string_view contents);

  std::filesystem::path plan_;
  std::filesystem::path path_;
  files::FileOperations& operations_;
  bool exists_ = false;
  std::vector<std::int32_t> numbers_;
  std::vector<std::string> foreignNames_;
};

}  // namespace krnqb::plan_file
