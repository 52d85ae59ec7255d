#include "cli/doctor/place_checks.h"

#include <fmt/format.h>

#include <array>
#include <filesystem>

#include "files/fault.h"
#include "files/folder_access.h"
#include "files/followed_path.h"
#include "files/lock.h"
#include "files/reading.h"
#include "plan_file/history/digest.h"
#include "plan_file/history/versions.h"
#include "support/error_handling.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;

void RequireWritable(const fs::path& path, std::error_code failure) {
  if (failure) throw files::FileError("cannot write to", path, failure);
}

// An import puts files of these names beside the plan.
void RequireFreeName(const fs::path& plan, std::string_view suffix) {
  const fs::path file = files::WithSuffix(plan, suffix);
  std::error_code unknown;
  if (!fs::is_directory(fs::symlink_status(file, unknown))) return;
  throw files::FileError("cannot write", file, "it is a folder", "move it away");
}

void CheckFolder(const fs::path& plan, Checkup& checkup) {
  constexpr std::array<std::string_view, 3> suffixes{".tmp", ".bak", ".bak.tmp"};
  try {
    files::SystemFileOperations operations;
    RequireWritable(plan.parent_path(), files::CheckFolderWritable(plan.parent_path()));
    RequireWritable(plan, operations.CheckWritable(plan));
    const fs::path history = plan_file::HistoryFolderOf(plan);
    std::error_code unknown;
    if (fs::is_directory(fs::symlink_status(history, unknown)))
      RequireWritable(history, files::CheckFolderWritable(history));
    for (const std::string_view suffix : suffixes) RequireFreeName(plan, suffix);
    checkup.Ok("folder",
               fmt::format("{} takes the plan, its backup and its history", TextOfPath(plan.parent_path())));
  } catch (...) {
    checkup.FailCaught("folder", "check the permissions");
  }
}

void CheckLock(const fs::path& plan, Checkup& checkup) {
  try {
    files::RequireFreeLock(plan);
    checkup.Ok("lock", "no import or undo is changing the plan");
  } catch (...) {
    checkup.FailCaught("lock", "try again");
  }
}

// "another program has changed the plan since import 3"
std::string StateText(const plan_file::HistoryState& state) {
  if (state.asWritten) return "the plan is as it was last written";
  if (!state.plan.import || *state.plan.import == 0) return "another program has changed the plan since";
  return fmt::format("another program has changed the plan since import {}", *state.plan.import);
}

void CheckHistory(const fs::path& plan, Checkup& checkup) {
  try {
    files::SystemFileOperations operations;
    const plan_file::HistoryFolder folder(plan, plan_file::HistoryUse::Reading, operations);
    const plan_file::HistoryState state =
        StateOf(folder, plan_file::DigestOf(files::ReadFile(plan, "cannot open the plan").bytes));
    const auto versions = plan_file::ListVersions(folder, state);
    for (const plan_file::ListedVersion& version : versions) {
      if (version.fault.empty()) continue;
      const std::size_t semicolon = version.fault.rfind("; ");
      checkup.Warn(
          "history", version.fault.substr(0, semicolon),
          semicolon == std::string::npos ? "see krnqb plan history" : version.fault.substr(semicolon + 2));
      return;
    }
    if (versions.empty()) {
      checkup.Ok("history", "no version is kept yet");
    } else {
      checkup.Ok("history", fmt::format("{} version{} can be brought back; {}", versions.size(),
                                        versions.size() == 1 ? "" : "s", StateText(state)));
    }
  } catch (...) {
    checkup.FailCaught("history", "see krnqb plan history");
  }
}

}  // namespace

void CheckPlace(const std::string& planFile, Checkup& checkup) {
  fs::path plan;
  try {
    plan = files::FollowedPlanPath(PathFrom(planFile));
  } catch (const Error&) {
    checkup.Omit({"folder", "lock", "history"}, "the plan cannot be opened");
    return;
  }
  CheckFolder(plan, checkup);
  CheckLock(plan, checkup);
  CheckHistory(plan, checkup);
}

}  // namespace krnqb::cli
