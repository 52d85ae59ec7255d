#include <fmt/format.h>
#include <windows.h>

#include "cli/exchange/scratch_folder.h"
#include "support/path_text.h"

namespace krnqb::cli {

namespace fs = std::filesystem;

// The folder for temporary files belongs to the user alone, and so does what is in it.
ScratchFolder::ScratchFolder() {
  const fs::path parent = fs::temp_directory_path();
  constexpr DWORD mostTries = 100;
  const DWORD start = GetTickCount();
  for (DWORD tries = 0; tries < mostTries; ++tries) {
    path_ = parent / PathFrom(fmt::format("krnqb-{}-{}", GetCurrentProcessId(), start + tries));
    std::error_code failure;
    if (fs::create_directory(path_, failure)) return;
    if (failure) throw fs::filesystem_error("create_directory", path_, failure);
  }
  throw fs::filesystem_error("create_directory", path_, std::make_error_code(std::errc::file_exists));
}

ScratchFolder::~ScratchFolder() {
  std::error_code ignored;
  fs::remove_all(path_, ignored);
}

}  // namespace krnqb::cli
