#include "cli/exchange/scratch_folder.h"

#include <cerrno>
#include <cstdlib>
#include <string>

namespace krnqb::cli {

namespace fs = std::filesystem;

ScratchFolder::ScratchFolder() {
  std::string path = (fs::temp_directory_path() / "krnqb-XXXXXX").native();
  if (mkdtemp(path.data()) == nullptr)
    throw fs::filesystem_error("mkdtemp", path, std::error_code(errno, std::generic_category()));
  path_ = path;
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

}  // namespace krnqb::cli
