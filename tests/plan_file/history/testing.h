#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "plan_file/fixture.h"
#include "plan_file/history/keeping.h"
#include "plan_file/history/state.h"
#include "plan_file/history/undo.h"

namespace krnqb::plan_file {

/// Returns what an import of 2002 into a plan of 2003 says about itself.
ImportFacts GardenImport();

/// File operations that leave the flushing to the system, which is much faster.
class UnflushedOperations : public files::SystemFileOperations {
 public:
  std::error_code Sync(const files::FileDescriptor& /*file*/) override { return {}; }
  std::error_code SyncFolder(const std::filesystem::path& /*folder*/) override { return {}; }
};

/// Imports as the command line does: locks the plan, marks it with a version and saves it with its history.
KeptSave ImportVersion(const std::filesystem::path& plan, int version, std::int32_t keep = versionsKept);
KeptSave ImportVersion(const std::filesystem::path& plan, int version, files::FileOperations& operations,
                       std::int32_t keep = versionsKept);

/// Undoes as the command line does.
UndoResult Undo(const std::filesystem::path& plan, std::optional<std::int32_t> version = std::nullopt,
                bool force = false);
UndoResult Undo(const std::filesystem::path& plan, files::FileOperations& operations);

/// Returns the state of a plan.
HistoryState StateNow(const std::filesystem::path& plan);

/// A plan of three imports: version 0 is `SmallPlanText`, the others are marked 1 to 3.
class ImportedPlan {
 public:
  ImportedPlan();

  /// Returns the path of a file in the history.
  std::filesystem::path Kept(std::string_view name) const { return folder / "garden.kpf.history" / name; }

  TemporaryFolder folder;
  std::filesystem::path file = folder / "garden.kpf";
  std::string texts[4];  ///< the versions
};

}  // namespace krnqb::plan_file
