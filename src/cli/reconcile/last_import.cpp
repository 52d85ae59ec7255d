#include "cli/reconcile/last_import.h"

#include "files/operations.h"
#include "files/reading.h"
#include "plan_file/history/digest.h"
#include "plan_file/history/folder.h"
#include "plan_file/history/state.h"

namespace krnqb::cli {

std::optional<KnownImport> ReadLastImport(const std::filesystem::path& plan) {
  using namespace plan_file;
  files::SystemFileOperations operations;
  const HistoryFolder folder(plan, HistoryUse::Reading, operations);
  if (folder.Numbers().empty()) return std::nullopt;
  const std::string bytes = files::ReadFile(plan, "cannot read the plan", operations).bytes;
  const HistoryState state = StateOf(folder, DigestOf(bytes));
  const std::int32_t import = state.plan.import.value_or(0);
  if (import == 0 || !folder.Has(import)) return std::nullopt;
  HistoryEntry entry = folder.Describe(import);
  if (!entry.import) return std::nullopt;
  return KnownImport{.facts = std::move(*entry.import), .asWritten = !state.plan.edited};
}

}  // namespace krnqb::cli
