#include <string>
#include <vector>

#include "cli/process.h"

int main(int argumentCount, char** arguments) {
  const std::vector<std::string> words(arguments + (argumentCount > 0 ? 1 : 0), arguments + argumentCount);
  return krnqb::cli::RunProcess(words);
}
