#include <malloc.h>

#include <string>
#include <vector>

#include "cli/process.h"

int main(int argumentCount, char** arguments) {
  // Otherwise the allocator keeps the memory of one large answer while it makes room for the next.
  constexpr int largeBlock = 1 << 20;
  mallopt(M_MMAP_THRESHOLD, largeBlock);
  const std::vector<std::string> words(arguments + (argumentCount > 0 ? 1 : 0), arguments + argumentCount);
  return krnqb::cli::RunProcess(words);
}
