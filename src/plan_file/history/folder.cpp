#include "plan_file/history/folder.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <utility>

#include "files/fault.h"
#include "files/input_file.h"
#include "files/owner.h"
#include "krnqb/error.h"
#include "plan_file/history/digest.h"
#include "plan_file/history/entry_text.h"
#include "support/path_text.h"

namespace krnqb::plan_file {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view folderSuffix = ".history";
constexpr std::string_view versionSuffix = ".kpf";
constexpr std::string_view descriptionSuffix = ".json";
constexpr std::string_view cannotKeep = "cannot keep the plan's version";
constexpr std::string_view moveAway = "move it away and try again";
constexpr std::uint64_t longestDescription = std::uint64_t{1} << 20U;
constexpr mode_t ownersFolder = 0700;
constexpr mode_t ownersFile = 0600;

std::string FileName(std::int32_t number, std::string_view suffix) {
  return fmt::format("{:04}{}", number, suffix);
}

// The number in a name that this program chooses for a file.
std::optional<std::int32_t> NumberIn(std::string_view name) {
  const std::size_t suffix = name.find('.');
  std::int32_t number = 0;
  const auto parsed = std::from_chars(name.data(), name.data() + std::min(suffix, name.size()), number);
  if (parsed.ec != std::errc() || number < 1 || number > highestVersion) return std::nullopt;
  const bool ours = name == FileName(number, versionSuffix) || name == FileName(number, descriptionSuffix);
  return ours ? std::optional(number) : std::nullopt;
}

// A file that is written under another name first and was left so by a killed process.
bool IsUnfinished(std::string_view name) {
  constexpr std::string_view suffix = ".tmp";
  return name.ends_with(suffix) && NumberIn(name.substr(0, name.size() - suffix.size()));
}

bool IsSymbolicLink(const fs::path& file) {
  std::error_code unknown;
  return fs::is_symlink(file, unknown);
}

[[noreturn]] void FailToOpen(const fs::path& folder, HistoryUse use, std::string_view reason,
                             std::string_view advice) {
  if (use == HistoryUse::Reading) {
    throw files::FileError("cannot read the plan's history", folder, reason, advice);
  }
  throw files::FileError(fmt::format("{} in", cannotKeep), folder, reason,
                         fmt::format("the plan is unchanged, {}", advice));
}

[[noreturn]] void FailToUse(std::int32_t number, const std::string& why, const std::string& whatToDo) {
  throw Error(error_number::unspecified,
              fmt::format("cannot use version {} of the history: {}; {}", number, why, whatToDo));
}

void Check(std::error_code failure, std::string_view step, const fs::path& where) {
  if (!failure) return;
  throw Error(error_number::unspecified,
              fmt::format("{} as {}: {} failed: {}; the plan is unchanged, {}", cannotKeep, TextOfPath(where),
                          step, files::ReasonText(failure), files::FileAdvice(failure)));
}

// Removes a file that was not completed.
class UnfinishedFile {
 public:
  UnfinishedFile(fs::path name, files::FileOperations& operations)
      : name_(std::move(name)), operations_(operations) {}
  UnfinishedFile(const UnfinishedFile&) = delete;
  UnfinishedFile& operator=(const UnfinishedFile&) = delete;
  ~UnfinishedFile() {
    if (!name_.empty()) operations_.Remove(name_);
  }
  void Completed() noexcept { name_.clear(); }

 private:
  fs::path name_;
  files::FileOperations& operations_;
};

}  // namespace

fs::path HistoryFolderOf(const fs::path& plan) {
  return files::WithSuffix(plan, folderSuffix);
}

bool IsKeptVersion(const fs::path& file) {
  return file.parent_path().extension() == PathFrom(folderSuffix) &&
         file.extension() == PathFrom(versionSuffix) && NumberIn(TextOfPath(file.filename()));
}

HistoryFolder::HistoryFolder(const fs::path& plan, HistoryUse use, files::FileOperations& operations)
    : plan_(plan), path_(HistoryFolderOf(plan)), operations_(operations) {
  std::vector<std::string> names;
  const std::error_code failure = operations_.ListFolder(path_, names);
  if (failure == std::errc::no_such_file_or_directory) return;
  if (failure && IsSymbolicLink(path_)) FailToOpen(path_, use, "it is a symbolic link", moveAway);
  if (failure == std::errc::not_a_directory) FailToOpen(path_, use, "it is not a folder", moveAway);
  if (failure) FailToOpen(path_, use, files::ReasonText(failure), files::FileAdvice(failure));
  exists_ = true;
  std::ranges::sort(names);
  for (std::string& name : names) {
    if (const std::optional<std::int32_t> number = NumberIn(name)) {
      numbers_.push_back(*number);
    } else if (!IsUnfinished(name)) {
      foreignNames_.push_back(std::move(name));
    }
  }
  std::ranges::sort(numbers_);
  const auto repeated = std::ranges::unique(numbers_);
  numbers_.erase(repeated.begin(), repeated.end());
}

bool HistoryFolder::Has(std::int32_t number) const noexcept {
  return std::ranges::binary_search(numbers_, number);
}

fs::path HistoryFolder::VersionFile(std::int32_t number) const {
  return path_ / PathFrom(FileName(number, versionSuffix));
}

fs::path HistoryFolder::DescriptionFile(std::int32_t number) const {
  return path_ / PathFrom(FileName(number, descriptionSuffix));
}

HistoryEntry HistoryFolder::Describe(std::int32_t number) const {
  const fs::path file = DescriptionFile(number);
  try {
    files::InputFile input(file, {}, operations_);
    return EntryFromText(input.ReadAll(longestDescription), number);
  } catch (const Error& error) {
    // An error of reading names the file already.
    const std::string& fault = error.Description();
    const std::string why =
        fault.starts_with(TextOfPath(file)) ? fault : fmt::format("{}: {}", TextOfPath(file), fault);
    FailToUse(number, fmt::format("its description is missing or damaged ({})", why),
              fmt::format("if you need the version, copy {} over the plan yourself",
                          TextOfPath(VersionFile(number))));
  }
}

std::string HistoryFolder::Version(std::int32_t number) const {
  files::InputFile input(VersionFile(number), {}, operations_);
  return input.ReadAll(files::documentLimit);
}

std::string HistoryFolder::Version(const HistoryEntry& entry) const {
  std::string version;
  try {
    version = Version(entry.number);
  } catch (const Error& error) {
    FailToUse(entry.number, error.Description(), "choose another version");
  }
  if (DigestOf(version) == entry.kept.digest) return version;
  const std::string file = TextOfPath(VersionFile(entry.number));
  FailToUse(entry.number, fmt::format("another program has changed {}", file),
            "choose another version, or copy the file over the plan yourself");
}

void HistoryFolder::Add(const HistoryEntry& entry, std::string_view version) {
  const fs::path versionFile = VersionFile(entry.number);
  const fs::path descriptionFile = DescriptionFile(entry.number);
  const std::string description = EntryText(entry);
  if (entry.number > highestVersion) {
    FailToOpen(path_, HistoryUse::Writing, fmt::format("the number {} is used already", highestVersion),
               moveAway);
  }
  if (!exists_) Create();
  try {
    Write(versionFile, version);
    Write(descriptionFile, description);
    Check(operations_.SyncFolder(path_), "flushing the folder", path_);
  } catch (...) {
    Remove(versionFile, descriptionFile);
    throw;
  }
}

void HistoryFolder::Remove(const fs::path& version, const fs::path& description) noexcept {
  operations_.Remove(version);
  operations_.Remove(description);
  operations_.RemoveFolder(path_);
}

void HistoryFolder::Create() {
  Check(operations_.CreateFolder(path_, ownersFolder), "creating the folder", path_);
  files::KeepFolderOwner(path_, plan_);
  exists_ = true;
}

void HistoryFolder::Write(const fs::path& file, std::string_view contents) {
  const fs::path temporary = files::WithSuffix(file, ".tmp");
  files::FileDescriptor written;
  Check(operations_.CreateTemporary(temporary, ownersFile, written), "creating", file);
  UnfinishedFile unfinished(temporary, operations_);
  files::KeepOwner(written, plan_);
  Check(operations_.Write(written, contents), "writing", file);
  Check(operations_.Sync(written), "flushing", file);
  Check(operations_.Rename(temporary, file), "renaming", file);
  unfinished.Completed();
}

}  // namespace krnqb::plan_file
