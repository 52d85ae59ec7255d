#include "cli/batch/output_files.h"

#include <fmt/format.h>

#include <memory>

#include "cli/console/attempt.h"
#include "cli/console/used_files.h"
#include "files/fault.h"
#include "files/operations.h"
#include "files/output_file.h"
#include "files/prepared_file.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

namespace fs = std::filesystem;

void RequireRegular(const OverviewFile& output) {
  std::error_code unknown;
  const fs::file_status status = fs::status(PathFrom(output.file), unknown);
  if (!fs::exists(status) || fs::is_regular_file(status)) return;
  throw WrongUsage(fmt::format("{} {} is not a regular file", output.option, output.file),
                   "give another file");
}

}  // namespace

void CheckOutputFiles(const std::vector<OverviewFile>& outputs, const std::vector<fs::path>& results) {
  if (outputs.empty()) return;
  UsedFiles used = StandardStreams(true);
  for (const fs::path& result : results) used.push_back(NamedFile("the result", TextOfPath(result)));
  for (const OverviewFile& output : outputs) {
    RequireRegular(output);
    const UsedFile file = NamedFile(output.option, output.file);
    Separate(file, used);
    used.push_back(file);
  }
}

void WriteOutputFiles(const std::vector<OverviewFile>& outputs) {
  files::SystemFileOperations operations;
  std::vector<std::unique_ptr<files::PreparedFile>> prepared;
  for (const OverviewFile& output : outputs) {
    const std::string failed = fmt::format("writing {} failed", output.option);
    Attempt([&] {
      auto& file = *prepared.emplace_back(
          std::make_unique<files::PreparedFile>(files::LinkTarget(PathFrom(output.file)), operations));
      files::OutputFile written(file.Temporary(), {}, operations);
      written.Stream() << output.text;
      if (const std::error_code failure = written.Finish()) {
        throw CommandFailure(
            failed,
            fmt::format("{} could not be written completely: {}", output.file, files::ReasonText(failure)),
            files::FileAdvice(failure));
      }
    });
  }
  for (const auto& file : prepared) Attempt([&] { file->Place(); });
  for (const auto& file : prepared) file->Keep();
}

}  // namespace krnqb::cli
