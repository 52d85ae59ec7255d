#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "krnqb/outside_world.h"

namespace krnqb::fakes {

/// Folders in memory, each with the names of its files. Paths are compared exactly.
class MemoryFiles : public FileSystem {
 public:
  std::vector<std::string> FileNames(const std::string& folder) override {
    const auto found = folders.find(folder);
    if (found == folders.end()) throw Error(error_number::pathNotFound);
    return found->second;
  }

  bool FileExists(const std::string& path) override {
    return std::find(files.begin(), files.end(), path) != files.end();
  }

  std::map<std::string, std::vector<std::string>> folders;
  std::vector<std::string> files;
};

}  // namespace krnqb::fakes
