#include "cli/process.h"

#include <unistd.h>

#include "cli/console/failure.h"
#include "cli/console/standard_streams.h"
#include "cli/dialog/toolkit.h"
#include "cli/run_krnqb.h"
#include "cli/system/stream_preparation.h"
#include "cli/system/terminal_width.h"

namespace krnqb::cli {
namespace {

std::size_t WidthOf(int descriptor) noexcept {
  return TerminalWidth(descriptor).value_or(defaultWidth);
}

}  // namespace

int RunProcess(std::span<const std::string> arguments) {
  if (!PrepareStandardStreams()) return static_cast<int>(ExitCode::Failed);  // there is nowhere to say why
  StandardStream output(STDOUT_FILENO);
  StandardStream errors(STDERR_FILENO);
  errors.Stream() << std::unitbuf;
  const Surroundings surroundings{.clock = nullptr,
                                  .errorIsTerminal = TerminalWidth(STDERR_FILENO).has_value(),
                                  .dialogToolkit = DialogToolkit(),
                                  .environment = {},
                                  .readerHasEnded = [&] { return output.ReaderHasEnded(); },
                                  .outputWidth = [] { return WidthOf(STDOUT_FILENO); },
                                  .errorWidth = [] { return WidthOf(STDERR_FILENO); },
                                  .stopwatch = {},
                                  .processorClasses = {}};
  return RunKrnqb(arguments, output.Stream(), errors.Stream(), surroundings);
}

}  // namespace krnqb::cli
