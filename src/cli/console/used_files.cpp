#include "cli/console/used_files.h"

#include <fmt/format.h>
#include <unistd.h>

#include "cli/console/failure.h"
#include "files/fault.h"
#include "files/operations.h"
#include "plan_file/history/folder.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

// The folder of the plan's history, if it exists, else its name, and the files in it.
UsedFiles HistoryFiles(const std::string& label, const std::filesystem::path& plan) {
  const std::filesystem::path folder = plan_file::HistoryFolderOf(plan);
  UsedFiles used{{label, files::IdentityOf(folder), true}};
  std::vector<std::string> names;
  files::SystemFileOperations operations;
  // A folder that cannot be read is reported where the history is used.
  static_cast<void>(operations.ListFolder(folder, names));
  for (const std::string& name : names) used.push_back({label, files::IdentityOf(folder / PathFrom(name))});
  return used;
}

// Whether the file would be created in that folder.
bool IsNewIn(const files::FileIdentity& file, const files::FileIdentity& folder) {
  return !file.newName.empty() && folder.newName.empty() && file.device == folder.device &&
         file.number == folder.number;
}

}  // namespace

void Append(UsedFiles& files, const UsedFiles& more) {
  files.insert(files.end(), more.begin(), more.end());
}

UsedFile NamedFile(std::string_view name, const std::string& path) {
  return {fmt::format("{} {}", name, path), files::IdentityOf(PathFrom(path))};
}

UsedFile FileBeside(std::string_view label, const std::filesystem::path& file, std::string_view suffix) {
  return {std::string(label), files::IdentityOf(files::WithSuffix(file, suffix))};
}

UsedFiles PreparedFiles(std::string_view name, const std::string& path) {
  const std::filesystem::path file = files::LinkTarget(PathFrom(path));
  const std::string temporary = fmt::format("a temporary file of {} {}", name, path);
  return {NamedFile(name, path), FileBeside(temporary, file, ".tmp"),
          FileBeside(temporary, file, ".previous")};
}

UsedFiles PlanFiles(std::string_view name, const std::string& plan) {
  const auto label = [&](std::string_view what) { return fmt::format("{} {} {}", what, name, plan); };
  // These are beside the plan itself, not beside a link to it.
  const std::filesystem::path file = files::LinkTarget(PathFrom(plan));
  UsedFiles used{NamedFile(name, plan), FileBeside(label("the backup of"), file, ".bak"),
                 FileBeside(label("the lock of"), file, ".lock"),
                 FileBeside(label("a temporary file of"), file, ".tmp"),
                 FileBeside(label("a temporary file of"), file, ".bak.tmp")};
  Append(used, HistoryFiles(label("the history of"), file));
  return used;
}

UsedFiles StandardStreams(bool prints) {
  UsedFiles files;
  if (prints) files.push_back({"standard output", files::IdentityOf(STDOUT_FILENO)});
  files.push_back({"standard error", files::IdentityOf(STDERR_FILENO)});
  return files;
}

void Separate(const UsedFile& file, const UsedFiles& others) {
  for (const UsedFile& other : others) {
    if (!file.identity || !other.identity) continue;
    if (other.holdsOthers && IsNewIn(*file.identity, *other.identity)) {
      throw WrongUsage(fmt::format("{} is in {}", file.label, other.label), "give another file");
    }
    if (file.identity != other.identity) continue;
    throw WrongUsage(fmt::format("{} and {} are the same file", file.label, other.label),
                     "give another file");
  }
}

}  // namespace krnqb::cli
