#include <unistd.h>

#include <string>
#include <vector>

#include "cli/console/failure.h"
#include "cli/console/standard_streams.h"
#include "cli/console/terminal_width.h"
#include "cli/dialog/toolkit.h"
#include "cli/run_krnqb.h"

namespace {

std::size_t WidthOf(int descriptor) noexcept {
  return krnqb::cli::TerminalWidth(descriptor).value_or(krnqb::cli::defaultWidth);
}

}  // namespace

int main(int argumentCount, char** arguments) {
  using namespace krnqb::cli;
  if (!PrepareStandardStreams()) return static_cast<int>(ExitCode::Failed);  // there is nowhere to say why
  const std::vector<std::string> words(arguments + (argumentCount > 0 ? 1 : 0), arguments + argumentCount);
  StandardStream output(STDOUT_FILENO);
  StandardStream errors(STDERR_FILENO);
  errors.Stream() << std::unitbuf;
  const Surroundings surroundings{.clock = nullptr,
                                  .errorIsTerminal = ::isatty(STDERR_FILENO) == 1,
                                  .dialogToolkit = DialogToolkit(),
                                  .environment = {},
                                  .readerHasEnded = [&] { return output.ReaderHasEnded(); },
                                  .outputWidth = [] { return WidthOf(STDOUT_FILENO); },
                                  .errorWidth = [] { return WidthOf(STDERR_FILENO); },
                                  .stopwatch = {}};
  return RunKrnqb(words, output.Stream(), errors.Stream(), surroundings);
}
