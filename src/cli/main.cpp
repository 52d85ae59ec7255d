#include <unistd.h>

#include <iostream>
#include <string>
#include <vector>

#include "cli/dialog/toolkit.h"
#include "cli/run_krnqb.h"

int main(int argumentCount, char** arguments) {
  const std::vector<std::string> words(arguments + (argumentCount > 0 ? 1 : 0), arguments + argumentCount);
  const krnqb::cli::Surroundings surroundings{.clock = nullptr,
                                              .errorIsTerminal = ::isatty(STDERR_FILENO) == 1,
                                              .dialogToolkit = krnqb::cli::DialogToolkit()};
  return krnqb::cli::RunKrnqb(words, std::cout, std::cerr, surroundings);
}
