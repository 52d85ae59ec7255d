#include "cli/report/output_file.h"

#include <fmt/format.h>

#include <filesystem>

#include "cli/console/attempt.h"
#include "files/fault.h"
#include "files/identity.h"
#include "files/output_file.h"
#include "support/path_text.h"

namespace krnqb::cli {
namespace {

constexpr std::string_view failed = "writing the report failed";
constexpr std::string_view remedy = "give another file with --report, or leave it out";

std::filesystem::path PlaceOf(const std::string& file) {
  const std::filesystem::path path = PathFrom(file);
  std::error_code unknown;
  const std::filesystem::file_status status = std::filesystem::status(path, unknown);
  if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
    throw CommandFailure(failed, fmt::format("{} is not a regular file", file), remedy);
  return files::LinkTarget(path);
}

}  // namespace

ReportFile::ReportFile(const std::string& file)
    : name_(file),
      file_(Attempt(failed, remedy, [&] { return files::PreparedFile(PlaceOf(file), operations_); })) {}

void ReportFile::Write(std::string_view page, std::string_view whatToDo) {
  Attempt(failed, whatToDo, [&] {
    files::OutputFile output(file_.Temporary(), {}, operations_);
    output.Stream() << page;
    if (const std::error_code failure = output.Finish()) {
      throw CommandFailure(
          failed, fmt::format("{} could not be written completely: {}", name_, files::ReasonText(failure)),
          whatToDo);
    }
    file_.Place();
    file_.Keep();
  });
}

}  // namespace krnqb::cli
