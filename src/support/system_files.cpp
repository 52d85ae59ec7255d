#include "support/system_files.h"

#include <filesystem>
#include <system_error>

namespace krnqb {
namespace {

namespace fs = std::filesystem;

fs::path PathOf(const std::string& text) {
  return std::u8string(text.begin(), text.end());
}

std::string TextOf(const fs::path& path) {
  const std::u8string text = path.u8string();
  return std::string(text.begin(), text.end());
}

class MachineFiles final : public FileSystem {
 public:
  std::vector<std::string> FileNames(const std::string& folder) override {
    std::error_code fault;
    std::vector<std::string> names;
    fs::directory_iterator entry(PathOf(folder), fault);
    for (const fs::directory_iterator end; !fault && entry != end; entry.increment(fault)) {
      std::error_code unknown;
      if (entry->is_regular_file(unknown)) names.push_back(TextOf(entry->path().filename()));
    }
    if (fault) throw Error(error_number::pathNotFound);
    return names;
  }

  bool FileExists(const std::string& path) override {
    std::error_code unknown;
    return fs::is_regular_file(PathOf(path), unknown);
  }
};

}  // namespace

std::shared_ptr<FileSystem> SystemFiles() {
  return std::make_shared<MachineFiles>();
}

}  // namespace krnqb
