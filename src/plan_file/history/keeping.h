#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

#include "files/operations.h"
#include "files/reading.h"
#include "plan_file/file.h"
#include "plan_file/history/entry.h"
#include "plan_file/history/folder.h"

namespace krnqb::plan_file {

struct KeptSave {
  std::filesystem::path backup;  ///< the .bak file
  std::int32_t number = 0;       ///< the previous version's in the history
};

/// Saves the plan of an import, as `PlanFile::Save` does, and first keeps the version in the file in the
/// plan's history. Afterwards removes from the history all but the last `keep` versions (1 or more) and the
/// first one. The caller holds the plan's lock.
///
/// Throws Error if the version cannot be kept or the plan cannot be saved; the file is then unchanged, as
/// after `PlanFile::Save`. Damage in the earlier history prevents nothing. If the process is killed, the file
/// is the complete old or new plan, and the history is complete either way.
KeptSave SaveWithHistory(PlanFile& plan, const ImportFacts& import, const std::string& when,
                         std::int32_t keep, files::FileOperations& operations);

/// Adds the entry with the version that it keeps, then replaces the plan, whose stamp is `stamp`. If that
/// fails, takes the entry out again, unless the plan was replaced all the same.
void AddAndReplace(HistoryFolder& folder, const HistoryEntry& entry, std::string_view version,
                   const std::filesystem::path& plan, const files::FileStamp& stamp,
                   const std::function<void()>& replace);

}  // namespace krnqb::plan_file
