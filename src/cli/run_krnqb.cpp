#include "cli/run_krnqb.h"

#include <algorithm>

#include "cli/command_line.h"
#include "cli/console/json_text.h"
#include "cli/console/streams.h"
#include "cli/import/command.h"
#include "cli/import/json_output.h"
#include "support/error_handling.h"

namespace krnqb::cli {
namespace {

ExitCode Run(const PrintedText& printed, const Console& console) {
  console.out << printed.text;
  return ExitCode::Done;
}

ExitCode RunCommand(const Command& command, const Console& console, const Surroundings& surroundings) {
  return std::visit(
      [&](const auto& options) {
        if constexpr (requires { Run(options, console, surroundings); }) {
          return Run(options, console, surroundings);
        } else {
          return Run(options, console);
        }
      },
      command);
}

bool ChangesFiles(const Command& command) {
  const auto* dialog = std::get_if<DialogOptions>(&command);
  const auto* check = std::get_if<CheckCompanyOptions>(&command);
  return std::holds_alternative<ImportCommand>(command) ||
         (dialog != nullptr && dialog->dialog == DialogName::Options) || (check != nullptr && check->fix) ||
         std::holds_alternative<NewCompanyOptions>(command) ||
         std::holds_alternative<LoadCompanyOptions>(command) ||
         std::holds_alternative<GenerateCompanyOptions>(command) ||
         std::holds_alternative<NewPlanOptions>(command);
}

std::string FailureJson(const Failure& failure) {
  return JsonText({{"result", ResultWord(ResultOf(failure.Code()))},
                   {"error_number", failure.Number()},
                   {"error_description", failure.Description()}});
}

// Reports the failure as JSON too if --json was typed, even on an invalid command line.
ExitCode Fail(const Failure& failure, std::span<const std::string> arguments, const Console& console) {
  PrintError(console, failure.Line());
  const bool json = std::find(arguments.begin(), arguments.end(), "--json") != arguments.end();
  if (!json) return failure.Code();
  if (arguments.front() == "import") {
    ImportOutcome outcome;
    outcome.result = ResultOf(failure.Code());
    outcome.errorNumber = failure.Number();
    outcome.errorDescription = failure.Description();
    console.out << ImportOutcomeJson(outcome) << '\n';
  } else {
    console.out << FailureJson(failure) << '\n';
  }
  return failure.Code();
}

// If the output could not be written, the command failed, unless it had already changed a file.
ExitCode Flushed(ExitCode code, bool changesFiles, const Console& console) {
  console.out.flush();
  if (console.out) return code;
  console.err << "krnqb: printing failed: cannot write to standard output; check the disk or the program "
                 "that reads it\n";
  return code == ExitCode::Done && !changesFiles ? ExitCode::Failed : code;
}

}  // namespace

int RunKrnqb(std::span<const std::string> arguments, std::ostream& out, std::ostream& err,
             const Surroundings& surroundings) noexcept {
  const Console console{out, err, surroundings.errorIsTerminal};
  ExitCode code = ExitCode::Failed;
  bool changesFiles = false;
  try {
    const Command command = ParseCommandLine(arguments);
    changesFiles = ChangesFiles(command);
    code = RunCommand(command, console, surroundings);
  } catch (const Failure& failure) {
    code = Fail(failure, arguments, console);
  } catch (...) {
    code = Fail({ExitCode::Failed, "the command failed", CaughtError(), "try again"}, arguments, console);
  }
  return static_cast<int>(Flushed(code, changesFiles, console));
}

}  // namespace krnqb::cli
