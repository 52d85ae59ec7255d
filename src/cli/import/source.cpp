#include "cli/import/source.h"

#include <fmt/format.h>

#include <istream>
#include <optional>
#include <utility>

#include "cli/console/attempt.h"
#include "cli/console/interrupt_watch.h"
#include "company/file.h"
#include "company/processor.h"
#include "files/fault.h"
#include "files/input_buffer.h"
#include "qbxml/exchange_recording.h"
#include "qbxml/exchange_replaying.h"

namespace krnqb::cli {
namespace {

ImportSource CompanySource(const std::string& path) {
  return Attempt(
      "opening the company failed", "check the path, or create a company with krnqb company new", [&] {
        const auto company = company::CompanyFile::Open(path, company::FileAccess::ReadOnly);
        const company::CompanyInfo info = company.Info();
        return ImportSource{
            .processors = company::EmbeddedProcessors(),
            .companyPath = path,
            .description = fmt::format("{} ({})", info.name, path),
            .majorVersion = static_cast<std::int16_t>(info.processorVersion.starts_with("2.") ? 2 : 1)};
      });
}

ImportSource RecordedSource(const std::string& path) {
  constexpr std::string_view failed = "opening the recording failed";
  files::SystemFileOperations operations;
  std::optional<files::InputFile> file;
  Attempt(failed, "check the path", [&] {
    file.emplace(path, files::ReadingRules{.pipes = true, .failure = {}, .interrupted = InterruptRequested},
                 operations);
  });
  files::InputBuffer buffer(*file);
  std::istream recording(&buffer);
  recording.exceptions(std::ios::badbit);  // a failure to read is not the recording's end
  return Attempt(failed, "record the exchange again with --record", [&] {
    ImportSource source{.processors = ReplayingProcessors(recording, path),
                        .companyPath = {},
                        .description = fmt::format("the recording {}", path),
                        .majorVersion = 0};
    source.majorVersion = source.processors->Create()->MajorVersion();
    return source;
  });
}

files::OutputFile CreateRecording(const std::string& path, files::FileOperations& operations) {
  return Attempt("recording failed", "check the path and the permissions of its folder",
                 [&] { return files::OutputFile(path, InterruptRequested, operations); });
}

}  // namespace

ImportSource OpenImportSource(const ImportCommand& options) {
  return options.replayFile ? RecordedSource(*options.replayFile)
                            : CompanySource(options.companyFile.value_or(""));
}

ExchangeFile::ExchangeFile(const std::string& path)
    : name_(path), lines_(CreateRecording(path, operations_)) {}

std::shared_ptr<RequestProcessorFactory> ExchangeFile::Recording(
    std::shared_ptr<RequestProcessorFactory> inner) {
  return RecordingProcessors(std::move(inner), std::make_shared<ExchangeRecorder>(lines_.Stream()));
}

void ExchangeFile::Finish() {
  if (const std::error_code failure = lines_.Finish()) {
    throw CommandFailure("recording failed",
                         fmt::format("{} could not be written completely: {}", name_, failure.message()),
                         fmt::format("{}, or import without --record", files::FileAdvice(failure)));
  }
}

}  // namespace krnqb::cli
