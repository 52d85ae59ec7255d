#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace krnqb::cli {

/// A file that a summary is written into.
struct OverviewFile {
  std::string option;  ///< such as "--html"
  std::string file;
  std::string text = {};
};

/// Throws Failure (WrongUsage) if one of the files is a result, another one of them, standard output or
/// standard error, or anything but a regular file.
void CheckOutputFiles(const std::vector<OverviewFile>& outputs,
                      const std::vector<std::filesystem::path>& results);

/// Writes the files, for their owner alone: all of them completely, or none. Throws Failure if that fails.
void WriteOutputFiles(const std::vector<OverviewFile>& outputs);

}  // namespace krnqb::cli
