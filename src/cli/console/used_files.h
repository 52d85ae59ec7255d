#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "files/identity.h"

namespace krnqb::cli {

/// A file that a command reads or writes, and how messages call it.
struct UsedFile {
  std::string label;
  std::optional<files::FileIdentity> identity;  ///< missing if it cannot be determined
  bool holdsOthers = false;                     ///< a folder: files in it are used too
};
using UsedFiles = std::vector<UsedFile>;

void Append(UsedFiles& files, const UsedFiles& more);

/// Returns the file at a path, which need not exist, with the label "NAME PATH", such as "--journal FILE".
UsedFile NamedFile(std::string_view name, const std::string& path);

/// Returns the file whose path is `file` with `suffix` appended.
UsedFile FileBeside(std::string_view label, const std::filesystem::path& file, std::string_view suffix);

/// Returns the file at `path` and those in which it is written before it takes its name.
UsedFiles PreparedFiles(std::string_view name, const std::string& path);

/// Returns a plan with its backup, lock, temporary files and history. `name` is what precedes the path in
/// messages, such as "--plan".
UsedFiles PlanFiles(std::string_view name, const std::string& plan);

/// Returns standard error and, if the command prints, standard output.
UsedFiles StandardStreams(bool prints);

/// Throws Failure (WrongUsage) if the file is one of the others, whatever names and links lead to it, or
/// would be in a folder of theirs.
void Separate(const UsedFile& file, const UsedFiles& others);

}  // namespace krnqb::cli
