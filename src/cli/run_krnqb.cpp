#include "cli/run_krnqb.h"

#include <algorithm>

#include "cli/command_line.h"
#include "cli/console/command_end.h"
#include "cli/console/json_text.h"
#include "cli/console/printable_buffer.h"
#include "cli/console/streams.h"
#include "cli/import/command.h"
#include "cli/import/json_output.h"
#include "cli/reconcile/command.h"
#include "cli/record/command.h"
#include "cli/report/import_command.h"
#include "cli/report/reconcile_command.h"
#include "support/error_handling.h"

namespace krnqb::cli {
namespace {

ExitCode Run(const PrintedText& printed, const Console& console) {
  console.out << printed.text;
  return ExitCode::Done;
}

CommandEnd RunCommand(const Command& command, const Console& console, const Surroundings& surroundings) {
  return std::visit(
      [&](const auto& options) -> CommandEnd {
        if constexpr (requires { RunWithReport(options, console, surroundings); }) {
          if (options.reportFile) return RunWithReport(options, console, surroundings);
        }
        if constexpr (requires { Run(options, console, surroundings); }) {
          return Run(options, console, surroundings);
        } else {
          return Run(options, console);
        }
      },
      command);
}

std::string FailureJson(const Failure& failure) {
  return JsonText({{"result", ResultWord(ResultOf(failure.Code()))},
                   {"error_number", failure.Number()},
                   {"error_description", failure.Description()},
                   {"remedy", failure.Remedy()}});
}

// A command that failed has changed no file, unless its exit code says that it is incomplete: it has loaded
// some of its documents. Reports the failure as JSON too if --json was typed, even on an invalid command
// line.
CommandEnd Fail(const Failure& failure, std::span<const std::string> arguments, const Console& console) {
  PrintError(console, failure.Line());
  const bool json = std::find(arguments.begin(), arguments.end(), "--json") != arguments.end();
  const CommandEnd end{failure.Code(), failure.Code() == ExitCode::Incomplete};
  if (!json) return end;
  if (arguments.front() == "import") {
    ImportOutcome outcome;
    SetFailure(outcome, failure);
    console.out << ImportOutcomeJson(outcome) << '\n';
  } else {
    console.out << FailureJson(failure) << '\n';
  }
  return end;
}

// If the output could not be written, the command failed, unless it had already changed a file: then it must
// not look as if it could be repeated. A reader that ends early, such as head, has what it needs: it is not
// an error then.
ExitCode Flushed(CommandEnd end, const Console& console, const Surroundings& surroundings) {
  console.out.flush();
  if (console.out || IsInterruption(end.code)) return end.code;
  const bool readerHasEnded = surroundings.readerHasEnded && surroundings.readerHasEnded();
  if (end.changedFiles) {
    PrintError(console,
               "krnqb: printing the report failed: cannot write to standard output; the command has written "
               "its file and need not be repeated");
    return end.code;
  }
  if (!readerHasEnded) {
    PrintError(console,
               "krnqb: printing failed: cannot write to standard output; check the disk or the program that "
               "reads it");
  }
  if (end.code != ExitCode::Done && end.code != ExitCode::Incomplete) return end.code;
  return readerHasEnded ? ExitCode::OutputClosed : ExitCode::Failed;
}

}  // namespace

int RunKrnqb(std::span<const std::string> arguments, std::ostream& out, std::ostream& err,
             const Surroundings& surroundings) noexcept try {
  PrintableBuffer printableOut(out, PrintableBuffer::CarriageReturns::AtLineEnds);
  PrintableBuffer printableErr(err, PrintableBuffer::CarriageReturns::Everywhere);
  std::ostream results(&printableOut);
  std::ostream errors(&printableErr);
  const Console console{results, errors, surroundings.errorIsTerminal,
                        surroundings.outputWidth ? surroundings.outputWidth() : defaultWidth,
                        surroundings.errorWidth};
  CommandEnd end = ExitCode::Failed;
  try {
    end = RunCommand(ParseCommandLine(arguments), console, surroundings);
  } catch (const Failure& failure) {
    end = Fail(failure, arguments, console);
  } catch (...) {
    end = Fail({ExitCode::Failed, "the command failed", CaughtError(), "try again"}, arguments, console);
  }
  const ExitCode code = Flushed(end, console, surroundings);
  errors.flush();
  return static_cast<int>(code);
} catch (...) {
  // There is no memory to report the failure in its own words.
  err << "krnqb: the command failed: Out of memory; close other programs and try again" << std::endl;
  return static_cast<int>(ExitCode::Failed);
}

}  // namespace krnqb::cli
