#include "cli/import/source.h"

#include <fmt/format.h>

#include <istream>
#include <memory>
#include <utility>

#include "cli/console/attempt.h"
#include "cli/console/interrupt_watch.h"
#include "cli/import/company_file.h"
#include "company/processor.h"
#include "files/fault.h"
#include "files/input_buffer.h"
#include "qbxml/exchange_recording.h"
#include "qbxml/exchange_replaying.h"

namespace krnqb::cli {
namespace {

ImportSource CompanySource(const std::string& path, const InterruptWatch& interrupts) {
  const company::CompanyFile company = OpenCompany(path, company::FileAccess::ReadOnly, interrupts);
  return Attempt("opening the company failed", "run krnqb company check", [&] {
    const company::CompanyInfo info = company.Info();
    return ImportSource{
        .processors = company::EmbeddedProcessors(FollowInterrupts(interrupts)),
        .companyPath = path,
        .description = fmt::format("{} ({})", info.name, path),
        .majorVersion = static_cast<std::int16_t>(info.processorVersion.starts_with("2.") ? 2 : 1),
        .warning = ChecksumWarning(path, company.HasChecksums()),
        .companyName = info.name,
        .processorVersion = info.processorVersion};
  });
}

ImportSource RecordedSource(const std::string& path) {
  constexpr std::string_view failed = "opening the recording failed";
  files::SystemFileOperations operations;
  const auto file = Attempt(failed, "check the path", [&] {
    return std::make_unique<files::InputFile>(
        path, files::ReadingRules{.pipes = true, .failure = {}, .interrupted = InterruptRequested},
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
    const auto processor = source.processors->Create();
    source.majorVersion = processor->MajorVersion();
    source.processorVersion = fmt::format("{}.{}", processor->MajorVersion(), processor->MinorVersion());
    return source;
  });
}

files::OutputFile CreateRecording(const std::string& path, files::FileOperations& operations) {
  return Attempt("recording failed", "check the path and the permissions of its folder",
                 [&] { return files::OutputFile(path, InterruptRequested, operations); });
}

}  // namespace

ImportSource OpenImportSource(const ImportCommand& options, const InterruptWatch& interrupts) {
  return options.replayFile ? RecordedSource(*options.replayFile)
                            : CompanySource(options.companyFile.value_or(""), interrupts);
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
