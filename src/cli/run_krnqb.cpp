#include "cli/run_krnqb.h"

#include <algorithm>

#include "cli/command_line.h"
#include "cli/console/json_text.h"
#include "cli/console/printable_buffer.h"
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

// If the output could not be written, the command failed, unless it had already changed a file. A reader that
// ends early, such as head, has what it needs: nothing is said then.
ExitCode Flushed(ExitCode code, bool changesFiles, const Console& console, const Surroundings& surroundings) {
  console.out.flush();
  if (console.out || IsInterruption(code)) return code;
  const bool readerHasEnded = surroundings.readerHasEnded && surroundings.readerHasEnded();
  if (!readerHasEnded) {
    PrintError(console,
               "krnqb: printing failed: cannot write to standard output; check the disk or the program that "
               "reads it");
  }
  if (code != ExitCode::Done || changesFiles) return code;
  return readerHasEnded ? ExitCode::OutputClosed : ExitCode::Failed;
}

}  // namespace

int RunKrnqb(std::span<const std::string> arguments, std::ostream& out, std::ostream& err,
             const Surroundings& surroundings) noexcept try {
  PrintableBuffer printableOut(out, PrintableBuffer::CarriageReturns::AtLineEnds);
  PrintableBuffer printableErr(err, PrintableBuffer::CarriageReturns::Everywhere);
  std::ostream results(&printableOut);
  std::ostream errors(&printableErr);
  const Console console{results, errors, surroundings.errorIsTerminal};
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
  code = Flushed(code, changesFiles, console, surroundings);
  errors.flush();
  return static_cast<int>(code);
} catch (...) {
  // There is no memory to report the failure in its own words.
  err << "krnqb: the command failed: Out of memory; close other programs and try again" << std::endl;
  return static_cast<int>(ExitCode::Failed);
}

}  // namespace krnqb::cli
