#include "cli/import/source.h"

#include <fmt/format.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "cli/console/attempt.h"
#include "company/file.h"
#include "company/processor.h"
#include "qbxml/exchange_recording.h"
#include "qbxml/exchange_replaying.h"

namespace krnqb::cli {
namespace {

std::string LastSystemMessage() {
  return std::generic_category().message(errno);
}

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

ImportSource OpenImportSource(const ImportCommand& options) {
  return options.replayFile ? RecordedSource(*options.replayFile)
                            : CompanySource(options.companyFile.value_or(""));
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
