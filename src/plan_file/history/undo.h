#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>

#include "files/operations.h"
#include "plan_file/history/entry.h"
#include "plan_file/history/folder.h"
#include "plan_file/history/state.h"

namespace krnqb::plan_file {

struct UndoRequest {
  std::optional<std::int32_t> version;  ///< which one to bring back; nullopt: the one before the last import
  bool force = false;                   ///< also if another program has changed the plan
  std::string when;                     ///< the moment, as `MomentText`
};

struct UndoResult {
  HistoryEntry restored;  ///< the entry whose version is back
  std::int32_t kept = 0;  ///< the number of the version that it replaced; 0 if the plan was that version
};

/// Throws Error, with what to do, if no import has kept a version of the plan, or its history cannot be read.
void RequireHistory(const std::filesystem::path& plan, files::FileOperations& operations);

/// Returns the number of the version that was there before the last import that has not been undone. Throws
/// Error, with what to do, if there is no such import or it is unknown.
std::int32_t VersionBeforeLastImport(const HistoryState& state, const std::filesystem::path& plan);

/// Returns the description of a kept version. Throws Error, with what to do, if the history has no such
/// version or its description is damaged.
HistoryEntry EntryOf(const HistoryFolder& folder, const HistoryState& state, std::int32_t version);

/// Replaces the plan by an earlier version, byte for byte, and keeps the version that it replaces in the
/// history. Nothing is removed from the history. `plan` is a path with symbolic links resolved; the caller
/// holds its lock.
///
/// Throws Error, with what to do, if there is no such version, if it is damaged, if another program has
/// changed the plan and `force` is not set, or if a step fails; the plan is then unchanged. If the process is
/// killed, the plan is the complete version before or after, and the history is complete either way.
UndoResult UndoTo(const std::filesystem::path& plan, const UndoRequest& request,
                  files::FileOperations& operations);

}  // namespace krnqb::plan_file
