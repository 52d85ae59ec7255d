#include "plan_file/history/testing.h"

#include "files/lock.h"
#include "plan_file/history/digest.h"

namespace krnqb::plan_file {

namespace fs = std::filesystem;

ImportFacts GardenImport() {
  return {.product = "ald",
          .planStart = "2003-01",
          .periodFrom = "2002-01",
          .periodTo = "2002-12",
          .options = {"--expenses", "--balances all"},
          .rowsAdded = 3,
          .rowsRemoved = 0,
          .cellsChanged = 24,
          .formulasCleared = 1};
}

KeptSave ImportVersion(const fs::path& plan, int version, std::int32_t keep) {
  UnflushedOperations operations;
  return ImportVersion(plan, version, operations, keep);
}

KeptSave ImportVersion(const fs::path& plan, int version, files::FileOperations& operations,
                       std::int32_t keep) {
  const files::PlanLock lock(plan);
  const std::shared_ptr<PlanFile> file = PlanFile::Open(plan);
  MarkVersion(*file, version);
  return SaveWithHistory(*file, GardenImport(), "2003-01-15T12:00:00", keep, operations);
}

UndoResult Undo(const fs::path& plan, std::optional<std::int32_t> version, bool force) {
  UnflushedOperations operations;
  const files::PlanLock lock(plan);
  return UndoTo(plan, {.version = version, .force = force, .when = "2003-01-16T09:30:00"}, operations);
}

UndoResult Undo(const fs::path& plan, files::FileOperations& operations) {
  const files::PlanLock lock(plan);
  return UndoTo(plan, {.version = std::nullopt, .force = false, .when = "2003-01-16T09:30:00"}, operations);
}

HistoryState StateNow(const fs::path& plan) {
  files::SystemFileOperations operations;
  const HistoryFolder folder(plan, HistoryUse::Reading, operations);
  return StateOf(folder, DigestOf(ReadText(plan)));
}

ImportedPlan::ImportedPlan() {
  WriteText(file, SmallPlanText());
  texts[0] = ReadText(file);
  for (int version = 1; version <= 3; ++version) {
    ImportVersion(file, version);
    texts[version] = ReadText(file);
  }
}

}  // namespace krnqb::plan_file
