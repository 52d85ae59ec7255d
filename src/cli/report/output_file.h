#pragma once

#include <string>
#include <string_view>

#include "files/operations.h"
#include "files/prepared_file.h"

namespace krnqb::cli {

/// The page that --report names. It appears under its name when it is complete, for its owner alone.
class ReportFile {
 public:
  /// Creates the file beside its place; links to it are followed. Throws Failure if that fails, or if
  /// anything but a regular file is in its place.
  explicit ReportFile(const std::string& file);

  /// Writes the page and gives it its name. Throws Failure, which says what to do, if that fails.
  void Write(std::string_view page, std::string_view whatToDo);

 private:
  std::string name_;
  files::SystemFileOperations operations_;
  files::PreparedFile file_;
};

}  // namespace krnqb::cli
