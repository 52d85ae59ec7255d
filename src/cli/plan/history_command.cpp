#include <fmt/format.h>

#include <algorithm>

#include "cli/console/attempt.h"
#include "cli/console/json_text.h"
#include "cli/console/shell_word.h"
#include "cli/console/text_table.h"
#include "cli/plan/history_commands.h"
#include "cli/plan/version_text.h"
#include "files/followed_path.h"
#include "files/reading.h"
#include "plan_file/history/digest.h"
#include "plan_file/history/entry_text.h"
#include "plan_file/history/versions.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

using plan_file::HistoryEntry;
using plan_file::HistoryFolder;
using plan_file::HistoryState;
using plan_file::ListedVersion;
using plan_file::PlanVersion;

std::string OriginText(const PlanVersion& version) {
  std::string text = "unknown";
  if (version.import) {
    text = *version.import == 0 ? "before any import" : fmt::format("after import {}", *version.import);
  }
  return version.edited ? text + ", edited" : text;
}

std::vector<std::string> RowOf(const ListedVersion& version) {
  const std::string number = fmt::format("{}", version.number);
  if (!version.entry) return {number, "?", "damaged"};
  const HistoryEntry& entry = *version.entry;
  if (!entry.import) {
    return {number, ShortMoment(entry.when), fmt::format("undo to {}", entry.restored), "", "",
            "",     OriginText(entry.kept)};
  }
  const plan_file::ImportFacts& import = *entry.import;
  return {number,
          ShortMoment(entry.when),
          "import",
          import.periodFrom,
          fmt::format("{}", import.rowsAdded),
          fmt::format("{}", import.cellsChanged),
          OriginText(entry.kept)};
}

std::string StateText(const HistoryState& state) {
  std::string text = "Which import the plan is the result of is unknown";
  if (state.plan.import) {
    text = *state.plan.import == 0 ? "The plan is the version before its first import"
                                   : fmt::format("The plan is the result of import {}", *state.plan.import);
  }
  if (!state.asWritten && state.fault.empty()) text += ", and another program has changed it since";
  return text + ".\n";
}

std::string HistoryText(const PlanHistoryOptions& options, const HistoryState& state,
                        const std::vector<ListedVersion>& versions) {
  if (versions.empty())
    return fmt::format("{} has no history: no import has written it yet.\n", options.file);
  using enum Alignment;
  TextTable table({Right, Left, Left, Left, Right, Right, Left});
  table.AddRow({"Version", "Replaced", "By", "Months from", "Rows", "Cells", "Holds the plan"});
  for (const ListedVersion& version : versions) table.AddRow(RowOf(version));
  std::string text = table.Text() + StateText(state);
  const std::string undo =
      fmt::format("krnqb plan undo {}{}", ShellWord(options.file), state.asWritten ? "" : " --force");
  if (const auto number = state.plan.import;
      number && *number > 0 && std::ranges::binary_search(state.numbers, *number)) {
    text += fmt::format("To bring back version {}: {}\n", *number, undo);
  }
  return text + fmt::format("To bring back another one: {} --to N\n", undo);
}

Json VersionJson(const HistoryFolder& folder, const ListedVersion& version) {
  Json json{{"number", version.number}};
  if (version.entry) json = Json::parse(plan_file::EntryText(*version.entry));
  json["file"] = TextOfPath(folder.VersionFile(version.number));
  json["fault"] = version.fault.empty() ? Json() : Json(version.fault);
  return json;
}

std::string HistoryJson(const std::filesystem::path& plan, const HistoryFolder& folder,
                        const HistoryState& state, const std::vector<ListedVersion>& versions,
                        ExitCode code) {
  const std::optional<std::int32_t>& import = state.plan.import;
  Json json{{"result", code == ExitCode::Done ? "done" : "incomplete"},
            {"path", TextOfPath(plan)},
            {"history", TextOfPath(folder.Path())},
            {"plan",
             {{"digest", state.plan.digest},
              {"import", import ? Json(*import) : Json()},
              {"edited", state.plan.edited},
              {"as_written", state.asWritten}}},
            {"versions", Json::array()},
            {"foreign_files", folder.ForeignNames()}};
  for (const ListedVersion& version : versions) json["versions"].push_back(VersionJson(folder, version));
  return JsonText(json);
}

}  // namespace

ExitCode Run(const PlanHistoryOptions& options, const Console& console) {
  return Attempt([&] {
    files::SystemFileOperations operations;
    const std::filesystem::path plan = files::FollowedPlanPath(PathFrom(options.file));
    const HistoryFolder folder(plan, plan_file::HistoryUse::Reading, operations);
    const HistoryState state =
        StateOf(folder, plan_file::DigestOf(files::ReadFile(plan, "cannot open the plan").bytes));
    const std::vector<ListedVersion> versions = plan_file::ListVersions(folder, state);
    ExitCode code = ExitCode::Done;
    for (const ListedVersion& version : versions) {
      if (version.fault.empty()) continue;
      Warn(console, version.fault);
      code = ExitCode::Incomplete;
    }
    for (const std::string& name : folder.ForeignNames()) {
      Warn(console, fmt::format("{} is not part of the history and is left alone",
                                TextOfPath(folder.Path() / PathFrom(name))));
    }
    console.out << (options.json ? HistoryJson(plan, folder, state, versions, code) + '\n'
                                 : HistoryText(options, state, versions));
    return code;
  });
}

}  // namespace krnqb::cli
