#include "cli/batch/result_folder.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <tuple>

#include "cli/console/failure.h"
#include "files/fault.h"
#include "files/reading.h"
#include "files/status.h"
#include "support/error_handling.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view failed = "summarizing failed";
constexpr std::string_view suffix = ".json";

ImportResultFile ReadFile(const fs::path& file) {
  try {
    return ReadImportResult(files::ReadFile(file, "cannot read").bytes);
  } catch (...) {
    const Error error = CaughtError();
    if (error.Kind() == ErrorKind::OutOfMemory) throw;
    const std::string& description = error.Description();
    const std::size_t semicolon = description.rfind("; ");
    if (semicolon == std::string::npos) return UnreadableResult(description, "check the file");
    return UnreadableResult(description.substr(0, semicolon), description.substr(semicolon + 2));
  }
}

}  // namespace

std::vector<fs::path> ResultFiles(const std::string& folder) {
  const fs::path path = PathFrom(folder);
  std::error_code failure;
  std::vector<fs::path> found;
  fs::directory_iterator entries(path, failure);
  for (; !failure && entries != fs::directory_iterator(); entries.increment(failure)) {
    const std::string name = TextOfPath(entries->path().filename());
    if (name.size() > suffix.size() && name.ends_with(suffix)) found.push_back(entries->path());
  }
  if (failure) {
    throw CommandFailure(failed,
                         fmt::format("cannot read the folder {}: {}", folder, files::ReasonText(failure)),
                         "give the folder with the results of krnqb import --json");
  }
  if (found.empty()) {
    throw CommandFailure(failed, fmt::format("the folder {} has no files *.json", folder),
                         "write the output of each krnqb import --json into a file there");
  }
  std::ranges::sort(found);
  return found;
}

std::vector<ImportResultFile> ReadResults(const std::vector<fs::path>& files,
                                          const std::function<void()>& stop) {
  std::vector<ImportResultFile> results;
  results.reserve(files.size());
  for (const fs::path& file : files) {
    stop();
    results.push_back(ReadFile(file));
    if (const auto stamp = files::StampOf(file))
      results.back().written = {stamp->seconds, stamp->nanoseconds};
    const std::string name = TextOfPath(file.filename());
    results.back().name = name.substr(0, name.size() - suffix.size());
  }
  std::ranges::sort(results, [](const ImportResultFile& one, const ImportResultFile& other) {
    return std::tie(other.written, one.name) < std::tie(one.written, other.name);
  });
  return results;
}

}  // namespace krnqb::cli
