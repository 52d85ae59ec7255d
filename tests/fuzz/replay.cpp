#include <exception>
#include <filesystem>
#include <iostream>

#include "fuzz/promise.h"
#include "temporary_folder.h"

// Runs a fuzz target on files, without a fuzzer: each argument is a file, or a folder with files, which may
// be missing. Fails without any file. A broken promise ends the process; the file is the last one named.

int main(int count, char** arguments) {
  try {
    std::size_t files = 0;
    const auto run = [&](const std::filesystem::path& file) {
      const std::string bytes = krnqb::tests::ReadText(file);
      std::cerr << file.string() << std::endl;
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++files;
    };
    for (int index = 1; index < count; ++index) {
      const std::filesystem::path path = arguments[index];
      if (std::filesystem::is_regular_file(path)) run(path);
      if (!std::filesystem::is_directory(path)) continue;
      for (const auto& entry : std::filesystem::directory_iterator(path)) run(entry.path());
    }
    std::cout << files << " inputs\n";
    return files == 0 ? 1 : 0;
  } catch (const std::exception& exception) {
    std::cerr << "An exception escaped: " << exception.what() << '\n';
    return 1;
  }
}
