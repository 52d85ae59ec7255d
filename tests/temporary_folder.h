#pragma once

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace krnqb::tests {

/// A folder owned by one test and removed with its contents.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "krnqb-test-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) throw std::runtime_error("cannot create a temporary folder");
    path_ = std::filesystem::canonical(name);
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
    std::filesystem::remove_all(path_, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  /// The absolute path, without symbolic links.
  const std::filesystem::path& Path() const noexcept { return path_; }
  /// The path of a file in the folder.
  std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

  /// The names in the folder, sorted.
  std::vector<std::string> FileNames() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(path_)) {
      names.push_back(entry.path().filename());
    }
    std::ranges::sort(names);
    return names;
  }

 private:
  std::filesystem::path path_;
};

/// Writes a file byte for byte, replacing its contents. Throws if that fails.
inline void WriteText(const std::filesystem::path& file, std::string_view text) {
  std::ofstream output(file, std::ios::binary | std::ios::trunc);
  output << text;
  if (!output.flush()) throw std::runtime_error("cannot write " + file.string());
}

/// Reads a file byte for byte. Throws if that fails.
inline std::string ReadText(const std::filesystem::path& file) {
  std::ifstream input(file, std::ios::binary);
  if (!input) throw std::runtime_error("cannot read " + file.string());
  std::ostringstream text;
  text << input.rdbuf();
  return std::move(text).str();
}

}  // namespace krnqb::tests
