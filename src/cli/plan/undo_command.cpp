#include <fmt/format.h>

#include "cli/console/attempt.h"
#include "cli/console/interrupt_watch.h"
#include "cli/console/shell_word.h"
#include "cli/plan/history_commands.h"
#include "cli/plan/version_text.h"
#include "files/followed_path.h"
#include "files/lock.h"
#include "plan_file/history/undo.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

std::string ResultText(const PlanUndoOptions& options, const plan_file::UndoResult& result) {
  const std::string version = VersionName(result.restored);
  if (result.kept == 0) return fmt::format("{} is {} already and was not written.\n", options.file, version);
  return fmt::format(
      "{} is {} again.\nThe version that it replaces is kept as version {}: krnqb plan undo {} --to {}\n",
      options.file, version, result.kept, ShellWord(options.file), result.kept);
}

}  // namespace

CommandEnd Run(const PlanUndoOptions& options, const Console& console, const Surroundings& surroundings) {
  // A signal that arrives while the plan is written would leave its temporary file.
  InterruptWatch interrupts;
  interrupts.PassPointOfNoReturn();
  const plan_file::UndoResult result = Attempt([&] {
    files::SystemFileOperations operations;
    const std::filesystem::path plan = files::FollowedPlanPath(PathFrom(options.file));
    plan_file::RequireHistory(plan, operations);  // a file that is not a plan gets no lock beside it
    const files::PlanLock lock(plan, operations);
    return plan_file::UndoTo(plan,
                             {.version = options.to,
                              .force = options.force,
                              .when = plan_file::MomentText(ClockOf(surroundings)->Now())},
                             operations);
  });
  console.out << ResultText(options, result);
  return {ExitCode::Done, result.kept != 0};
}

}  // namespace krnqb::cli
