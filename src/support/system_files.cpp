#include "support/system_files.h"

#include <filesystem>
#include <system_error>

#include "support/path_text.h"

namespace krnqb {
namespace {

namespace fs = std::filesystem;

class MachineFiles final : public FileSystem {
 public:
  std::vector<std::string> FileNames(const std::string& folder) override {
    std::error_code fault;
    std::vector<std::string> names;
    fs::directory_iterator entry(PathFrom(folder), fault);
    for (const fs::directory_iterator end; !fault && entry != end; entry.increment(fault)) {
      std::error_code unknown;
      if (entry->is_regular_file(unknown)) names.push_back(TextOfPath(entry->path().filename()));
    }
    if (fault) throw Error(error_number::pathNotFound);
    return names;
  }

  bool FileExists(const std::string& path) override {
    std::error_code unknown;
    return fs::is_regular_file(PathFrom(path), unknown);
  }
};

}  // namespace

std::shared_ptr<FileSystem> SystemFiles() {
  return std::make_shared<MachineFiles>();
}

}  // namespace krnqb
