#include "plan_file/history/undo.h"

#include <fmt/format.h>

#include <algorithm>

#include "files/atomic_file.h"
#include "files/fault.h"
#include "files/reading.h"
#include "krnqb/error.h"
#include "plan_file/history/digest.h"
#include "plan_file/history/keeping.h"
#include "support/path_text.h"

namespace krnqb::plan_file {
namespace {

namespace fs = std::filesystem;

Error Refusal(const fs::path& plan, const std::string& why, const std::string& whatToDo) {
  return Error(error_number::unspecified, fmt::format("cannot bring back an earlier version of {}: {}; {}",
                                                      TextOfPath(plan), why, whatToDo));
}

Error NoHistory(const fs::path& plan) {
  return files::FileError("there is no earlier version of", plan, "no import has written it yet",
                          "import into it first");
}

std::string VersionList(const std::vector<std::int32_t>& numbers) {
  return numbers.size() == 1 ? fmt::format("its only version is {}", numbers.front())
                             : fmt::format("its versions are {}", fmt::join(numbers, ", "));
}

void RequireAsWritten(const HistoryState& state, const fs::path& plan) {
  if (state.asWritten) return;
  if (!state.fault.empty()) {
    throw Refusal(
        plan, fmt::format("{}, so it is unknown whether another program has changed the plan", state.fault),
        "add --force and choose a version with --to N; the present version is kept as well");
  }
  throw Refusal(plan, "another program has changed it since krnqb last wrote it",
                "add --force to replace it all the same; the present version is kept as well");
}

}  // namespace

void RequireHistory(const fs::path& plan, files::FileOperations& operations) {
  const HistoryFolder folder(plan, HistoryUse::Writing, operations);
  if (folder.Numbers().empty()) throw NoHistory(plan);
}

std::int32_t VersionBeforeLastImport(const HistoryState& state, const fs::path& plan) {
  if (state.numbers.empty()) throw NoHistory(plan);
  constexpr std::string_view chooseOne =
      "list the versions with krnqb plan history and give the number of one";
  if (!state.plan.import) {
    throw files::FileError("the version before the last import is unknown for", plan,
                           "its history is damaged", chooseOne);
  }
  if (*state.plan.import == 0) {
    throw files::FileError("no import is left to undo in", plan, "it is the version before the first one",
                           chooseOne);
  }
  if (!std::ranges::binary_search(state.numbers, *state.plan.import)) {
    throw files::FileError(
        fmt::format("version {}, from before the last import, is no longer kept for", *state.plan.import),
        plan, VersionList(state.numbers), "give the number of one of them");
  }
  return *state.plan.import;
}

HistoryEntry EntryOf(const HistoryFolder& folder, const HistoryState& state, std::int32_t version) {
  if (std::ranges::binary_search(state.numbers, version)) return folder.Describe(version);
  if (state.numbers.empty()) {
    throw files::FileError("there is no version to choose from in the history", folder.Path(),
                           "no import has written the plan yet", "import into it first");
  }
  throw files::FileError(fmt::format("there is no version {} in the history", version), folder.Path(),
                         VersionList(state.numbers), "choose one of them");
}

UndoResult UndoTo(const fs::path& plan, const UndoRequest& request, files::FileOperations& operations) {
  HistoryFolder folder(plan, HistoryUse::Writing, operations);
  const files::FileContents current =
      files::ReadFile(plan, "cannot keep the version of the plan", operations);
  const HistoryState state = StateOf(folder, DigestOf(current.bytes));
  if (!request.force && !state.numbers.empty()) RequireAsWritten(state, plan);
  const std::int32_t version = request.version ? *request.version : VersionBeforeLastImport(state, plan);
  const HistoryEntry restored = EntryOf(folder, state, version);
  const std::string bytes = folder.Version(restored);
  if (restored.kept.digest == state.plan.digest) return {restored, 0};

  const HistoryEntry entry{.number = state.next,
                           .when = request.when,
                           .kept = state.plan,
                           .written = restored.kept,
                           .import = std::nullopt,
                           .restored = version};
  AddAndReplace(folder, entry, current.bytes, plan, current.stamp, [&] {
    if (files::StampOf(plan) != current.stamp) {
      throw Refusal(plan, "another program is changing it", "try again");
    }
    files::ReplaceFile(plan, bytes, operations);
  });
  return {restored, state.next};
}

}  // namespace krnqb::plan_file
