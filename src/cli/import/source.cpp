#include "cli/import/source.h"

#include <fmt/format.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "cli/console/attempt.h"
#include "cli/import/company_file.h"
#include "company/processor.h"
#include "qbxml/exchange_recording.h"
#include "qbxml/exchange_replaying.h"

namespace krnqb::cli {
namespace {

std::string LastSystemMessage() {
  return std::generic_category().message(errno);
}

ImportSource CompanySource(const std::string& path, const InterruptWatch& interrupts) {
  const company::CompanyFile company = OpenCompany(path, company::FileAccess::ReadOnly, interrupts);
  return Attempt("opening the company failed", "run krnqb company check", [&] {
    const company::CompanyInfo info = company.Info();
    return ImportSource{
        .processors = company::EmbeddedProcessors(FollowInterrupts(interrupts)),
        .companyPath = path,
        .description = fmt::format("{} ({})", info.name, path),
        .majorVersion = static_cast<std::int16_t>(info.processorVersion.starts_with("2.") ? 2 : 1),
        .warning = ChecksumWarning(path, company.HasChecksums())};
  });
}

ImportSource RecordedSource(const std::string& path) {
  constexpr std::string_view failed = "opening the recording failed";
  std::ifstream recording(path, std::ios::binary);
  if (!recording) {
    throw CommandFailure(failed, fmt::format("{}: {}", path, LastSystemMessage()), "check the path");
  }
  return Attempt(failed, "record the exchange again with --record", [&] {
    ImportSource source{.processors = ReplayingProcessors(recording, path),
                        .companyPath = {},
                        .description = fmt::format("the recording {}", path),
                        .majorVersion = 0};
    source.majorVersion = source.processors->Create()->MajorVersion();
    return source;
  });
}

}  // namespace

ImportSource OpenImportSource(const ImportCommand& options, const InterruptWatch& interrupts) {
  return options.replayFile ? RecordedSource(*options.replayFile)
                            : CompanySource(options.companyFile.value_or(""), interrupts);
}

ExchangeFile::ExchangeFile(const std::string& path) : name_(path) {
  lines_.open(path, std::ios::binary | std::ios::trunc);
  if (!lines_) {
    throw CommandFailure("recording failed", fmt::format("{}: {}", path, LastSystemMessage()),
                         "check the path and the permissions of its folder");
  }
}

std::shared_ptr<RequestProcessorFactory> ExchangeFile::Recording(
    std::shared_ptr<RequestProcessorFactory> inner) {
  return RecordingProcessors(std::move(inner), std::make_shared<ExchangeRecorder>(lines_));
}

void ExchangeFile::Finish() {
  lines_.close();
  if (!lines_) {
    throw CommandFailure("recording failed", fmt::format("{} could not be written completely", name_),
                         "free some disk space, or import without --record");
  }
}

}  // namespace krnqb::cli
