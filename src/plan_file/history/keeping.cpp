#include "plan_file/history/keeping.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "plan_file/history/digest.h"
#include "plan_file/history/state.h"

namespace krnqb::plan_file {
namespace {

namespace fs = std::filesystem;

struct EntryFiles {
  fs::path version;
  fs::path description;
};

// The entries that a history drops when a version is added.
std::vector<EntryFiles> Outdated(const HistoryFolder& folder, const std::vector<std::int32_t>& earlier,
                                 std::int32_t keep) {
  std::vector<EntryFiles> outdated;
  const auto kept = static_cast<std::size_t>(std::max(keep, 1)) - 1;  // the new one is kept too
  for (std::size_t index = 1; index + kept < earlier.size(); ++index) {
    outdated.push_back({folder.VersionFile(earlier[index]), folder.DescriptionFile(earlier[index])});
  }
  return outdated;
}

}  // namespace

KeptSave SaveWithHistory(PlanFile& plan, const ImportFacts& import, const std::string& when,
                         std::int32_t keep, files::FileOperations& operations) {
  HistoryFolder folder(plan.Path(), HistoryUse::Writing, operations);
  const files::FileContents previous =
      files::ReadFile(plan.Path(), "cannot keep the version of the plan", operations);
  const HistoryState state = StateOf(folder, DigestOf(previous.bytes));
  HistoryEntry entry;
  entry.number = state.next;
  entry.when = when;
  entry.kept = state.plan;
  entry.written.import = state.next;
  entry.import = import;
  const std::vector<EntryFiles> outdated = Outdated(folder, state.numbers, keep);

  KeptSave saved{.backup = {}, .number = state.next};
  const auto keepPrevious = [&](std::string_view text, const std::function<void()>& replace) {
    entry.written.digest = DigestOf(text);
    AddAndReplace(folder, entry, previous.bytes, plan.Path(), previous.stamp, replace);
  };
  saved.backup = plan.Save(operations, keepPrevious);
  for (const EntryFiles& files : outdated) {
    operations.Remove(files.version);
    operations.Remove(files.description);
  }
  return saved;
}

void AddAndReplace(HistoryFolder& folder, const HistoryEntry& entry, std::string_view version,
                   const fs::path& plan, const files::FileStamp& stamp,
                   const std::function<void()>& replace) {
  const fs::path versionFile = folder.VersionFile(entry.number);
  const fs::path descriptionFile = folder.DescriptionFile(entry.number);
  folder.Add(entry, version);
  try {
    replace();
  } catch (...) {
    if (files::StampOf(plan) == stamp) folder.Remove(versionFile, descriptionFile);
    throw;
  }
}

}  // namespace krnqb::plan_file
