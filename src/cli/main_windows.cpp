#include <string>
#include <vector>

#include "cli/process.h"
#include "support/windows_text.h"

int wmain(int argumentCount, wchar_t** arguments) {
  std::vector<std::string> words;
  for (int index = 1; index < argumentCount; ++index) words.push_back(krnqb::Utf8(arguments[index]));
  return krnqb::cli::RunProcess(words);
}
